// quillon demo: the robot-arm example, in a window where there is a display, else as images.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

#include "Commands.h"
#include "RenderSupport.h"
#include "channels/ChannelStream.h"

namespace quillon::app {
namespace {

struct DemoOptions {
  std::string outputDir;
  bool headless = false;
};

const std::string kExamples = QUILLON_EXAMPLES_DIR;

// The camera's orientation text for a camera at `eye` that looks at `target` (metres): a turn
// about the vertical axis, then a tilt about the camera's own horizontal axis, so the horizon stays level.
std::string lookAt(const double eye[3], const double target[3]) {
  const double d[3] = {target[0] - eye[0], target[1] - eye[1], target[2] - eye[2]};
  const double length = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
  const double yaw = std::atan2(-d[0], -d[2]);
  const double pitch = std::asin(d[1] / length);
  const double cy = std::cos(yaw / 2), sy = std::sin(yaw / 2), cp = std::cos(pitch / 2), sp = std::sin(pitch / 2);
  const double q[4] = {cy * sp, sy * cp, -sy * sp, cy * cp};  // yaw * pitch
  const double angle = 2.0 * std::acos(q[3]);
  const double s = std::sqrt(1.0 - q[3] * q[3]);
  if (s < 1e-9) return "0 1 0 0";
  char text[128];
  std::snprintf(text, sizeof text, "%.6f %.6f %.6f %.6f", q[0] / s, q[1] / s, q[2] / s, angle);
  return text;
}

// A three-quarter view from the front, a little above the rail, that keeps the whole reach in sight.
constexpr double kEye[3] = {0.3, 0.35, 0.85}, kTarget[3] = {0.0, 0.14, 0.0};

std::string eyeText() {
  char position[96];
  std::snprintf(position, sizeof position, "%.3f %.3f %.3f", kEye[0], kEye[1], kEye[2]);
  return position;
}

int runHeadless(const DemoOptions& options) {
  const std::string document = kExamples + "/robot_arm.xml";
  const std::string streamPath = kExamples + "/robot_arm.qcs";
  std::string xml;
  std::ifstream streamFile(streamPath, std::ios::binary);
  std::vector<ChannelStreamRecord> records;
  if (!ReadFile(document, xml) || !streamFile ||
      ChannelStreamReader::ReadAll(streamFile, records) != ChannelStreamReader::Status::kEnd) {
    std::cerr << "quillon demo: cannot read the example " << document << " with " << streamPath << '\n';
    return 2;
  }
  std::error_code ec;
  const std::filesystem::path dir = options.outputDir.empty()
                                        ? std::filesystem::temp_directory_path(ec) / "quillon-demo"
                                        : std::filesystem::path(options.outputDir);
  std::filesystem::create_directories(dir, ec);

  OffscreenViewer viewer(800, 600);
  if (!viewer.ok()) {
    std::cerr << "quillon demo: no offscreen render area (EGL) on this machine\n";
    return 1;
  }
  if (const LoadOutcome outcome = viewer.load(xml); !outcome.loaded()) {
    std::cerr << "quillon demo: the example was refused:\n";
    PrintErrorList(std::cerr, outcome.errors);
    return 1;
  }
  viewer.setCamera(eyeText(), lookAt(kEye, kTarget));

  int written = 0;
  for (const ChannelStreamRecord& record : records) {
    viewer.send(record.message);
    char name[32];
    std::snprintf(name, sizeof name, "frame-%05d.png", written);
    if (!viewer.writePng((dir / name).string())) {
      std::cerr << "quillon demo: cannot write into " << dir << '\n';
      return 1;
    }
    ++written;
  }
  std::cout << "No display: rendered " << written << " frames of " << document << "\nwith " << streamPath << "\ninto "
            << dir.string() << "/frame-*.png\n";
  return 0;
}

int runDemo(const DemoOptions& options) {
  const bool display = std::getenv("DISPLAY") || std::getenv("WAYLAND_DISPLAY");
  if (options.headless || !display) return runHeadless(options);
  return RunViewer(kExamples + "/robot_arm.xml", kExamples + "/robot_arm.qcs", 1.0, eyeText(), lookAt(kEye, kTarget));
}

}  // namespace

void addDemoCommand(CLI::App& app, Action& run) {
  auto options = std::make_shared<DemoOptions>();
  CLI::App* cmd = app.add_subcommand("demo", "Run the robot-arm example: a window with a display, else PNG frames");
  cmd->add_flag("--headless", options->headless, "Write the frames as images even where there is a display");
  cmd->add_option("--out", options->outputDir, "Folder for the frames (default: quillon-demo in the temporary folder)");
  cmd->callback([&run, options] { run = [options] { return runDemo(*options); }; });
}

}  // namespace quillon::app
