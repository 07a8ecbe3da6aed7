// quillon demo: the robot-arm example, in a window where there is a display, else as images.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

#include "Commands.h"
#include "Framing.h"
#include "RenderSupport.h"
#include "channels/ChannelStream.h"

namespace quillon::app {
namespace {

struct DemoOptions {
  std::string outputDir;
  bool headless = false;
};

// The installed examples beside the program (PREFIX/share/quillon/examples), else the source tree's.
std::string ExamplesDir() {
  std::error_code ec;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", ec);
  if (!ec) {
    const std::filesystem::path installed = program.parent_path().parent_path() / "share" / "quillon" / "examples";
    if (std::filesystem::is_regular_file(installed / "robot_arm.xml", ec)) return installed.string();
  }
  return QUILLON_EXAMPLES_DIR;
}

int runHeadless(const DemoOptions& options) {
  const std::string examples = ExamplesDir();
  const std::string document = examples + "/robot_arm.xml";
  const std::string streamPath = examples + "/robot_arm.qcs";
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
  // The arm's whole reach through the stream stays in the picture.
  viewer.setCamera(FrameThreeQuarter(MotionBounds(xml, records), 800.0 / 600.0));

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
  const std::string examples = ExamplesDir();
  return RunViewer(examples + "/robot_arm.xml", examples + "/robot_arm.qcs", 1.0);
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
