// quillon render: a document (and a recorded stream) to PNG images, without a display.
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "Commands.h"
#include "Framing.h"
#include "LiveRender.h"
#include "RenderSupport.h"
#include "channels/ChannelStream.h"

namespace quillon::app {
namespace {

struct RenderOptions {
  std::string document;
  std::string stream;
  std::string size = "800x600";
  bool viewAll = false;
  std::string camera;  // the six camera texts, separated by ";"
  std::string output;
  std::string frames;
  LiveRenderOptions live;
};

// From this many pixels on, the command says that the image will take a while.
constexpr long long kLargeImagePixels = 3840LL * 2160LL;

bool parseSize(const std::string& text, int& width, int& height) {
  char x = 0;
  std::istringstream in(text);
  return (in >> width >> x >> height) && x == 'x' && in.peek() == EOF && width > 0 && height > 0 && width <= 16384 &&
         height <= 16384;
}

int runRender(const RenderOptions& options) {
  int width = 0, height = 0;
  if (!parseSize(options.size, width, height)) {
    std::cerr << "quillon render: --size wants WIDTHxHEIGHT, e.g. 800x600\n";
    return 2;
  }
  if (options.output.empty() == options.frames.empty()) {
    std::cerr << "quillon render: give either -o OUT.png or --frames DIR\n";
    return 2;
  }
  CameraTexts camera;
  if (!options.camera.empty() && (options.viewAll || !SplitCameraOption(options.camera, camera))) {
    std::cerr << "quillon render: --camera wants \"POSITION;ORIENTATION;NEAR;FAR;FOCAL;ZOOM\" (metres, radians), "
                 "and not with --view-all\n";
    return 2;
  }
  const bool live = options.live.source.given();
  if (live && !options.stream.empty()) {
    std::cerr << "quillon render: give either --stream FILE.qcs or a live source (--connect, --bind)\n";
    return 2;
  }
  if (!options.frames.empty() && options.stream.empty() && !live) {
    std::cerr << "quillon render: --frames writes one image per message, so it needs --stream FILE.qcs\n";
    return 2;
  }
  std::string xml;
  if (!ReadFile(options.document, xml)) {
    std::cerr << "quillon: cannot read " << options.document << '\n';
    return 2;
  }
  std::vector<ChannelStreamRecord> records;
  if (!options.stream.empty()) {
    std::ifstream in(options.stream, std::ios::binary);
    if (!in) {
      std::cerr << "quillon render: cannot read " << options.stream << '\n';
      return 2;
    }
    const auto status = ChannelStreamReader::ReadAll(in, records);
    if (status == ChannelStreamReader::Status::kBadMagic) {
      std::cerr << "quillon render: " << options.stream << " is not a channel stream\n";
      return 2;
    }
    if (status != ChannelStreamReader::Status::kEnd)
      std::cerr << "quillon render: " << options.stream << " ends in a cut-off record; replaying what came before\n";
  }

  OffscreenViewer viewer(width, height);
  if (!viewer.ok()) {
    std::cerr << "quillon render: no offscreen render area (EGL) on this machine\n";
    return 1;
  }
  const LoadOutcome outcome = viewer.load(xml);
  if (!outcome.loaded()) {
    std::cerr << options.document << ": bad\n";
    PrintErrorList(std::cerr, outcome.errors);
    return 1;
  }
  // Without a camera of the user's, the view takes in the whole scene through the whole stream.
  if (options.viewAll)
    viewer.viewAll();
  else if (!options.camera.empty() ? !viewer.setCamera(camera)
                                   : !viewer.setCamera(FrameThreeQuarter(MotionBounds(xml, records),
                                                                         static_cast<double>(width) / height))) {
    std::cerr << "quillon render: the camera texts could not be read: " << options.camera << '\n';
    return 2;
  }
  if (static_cast<long long>(width) * height >= kLargeImagePixels)
    std::cerr << "quillon render: " << width << 'x' << height
              << " is a large image; on a software rasteriser each one takes a while\n";
  SendErrorLog sendErrors(outcome.groups);
  if (live) {
    LiveRenderOptions liveOptions = options.live;
    liveOptions.output = options.output;
    liveOptions.frames = options.frames;
    return RenderLive(viewer, outcome.groups, liveOptions, sendErrors);
  }

  if (!options.frames.empty()) {
    std::error_code ec;
    std::filesystem::create_directories(options.frames, ec);
    int written = 0;
    const bool counting = isatty(STDERR_FILENO);
    for (std::size_t i = 0; i < records.size(); ++i) {
      if (counting) std::cerr << "\rframe " << i + 1 << " of " << records.size() << std::flush;
      sendErrors.note(i, records[i].message, viewer.send(records[i].message));
      char name[32];
      std::snprintf(name, sizeof name, "frame-%05zu.png", i);
      const std::string path = (std::filesystem::path(options.frames) / name).string();
      if (!viewer.writePng(path)) {
        std::cerr << "quillon render: cannot write " << path << '\n';
        return 1;
      }
      ++written;
    }
    if (counting) std::cerr << '\n';
    sendErrors.report(std::cerr, "quillon render");
    std::cout << "Wrote " << written << " frames to " << options.frames << '\n';
    return 0;
  }
  for (std::size_t i = 0; i < records.size(); ++i)
    sendErrors.note(i, records[i].message, viewer.send(records[i].message));
  sendErrors.report(std::cerr, "quillon render");
  if (!viewer.writePng(options.output)) {
    std::cerr << "quillon render: cannot write " << options.output << '\n';
    return 1;
  }
  std::cout << "Wrote " << options.output << '\n';
  return 0;
}

}  // namespace

void addRenderCommand(CLI::App& app, Action& run) {
  auto options = std::make_shared<RenderOptions>();
  CLI::App* cmd = app.add_subcommand("render", "Render a document (after replaying a stream) to PNG, headlessly");
  cmd->add_option("document", options->document, "Visualisation document (XML)")->required();
  cmd->add_option("--stream", options->stream, "Channel stream (.qcs) to replay first");
  cmd->add_option("--size", options->size, "Image size WIDTHxHEIGHT")->capture_default_str();
  cmd->add_flag("--view-all", options->viewAll, "Fit the view to the scene from the camera's direction (View All)");
  cmd->add_option("--camera", options->camera,
                  "Camera texts \"POSITION;ORIENTATION;NEAR;FAR;FOCAL;ZOOM\" (metres, radians); "
                  "default: the whole scene and its motion, from the front right above");
  cmd->add_option("-o,--output", options->output, "PNG file to write");
  cmd->add_option("--frames", options->frames, "Folder for one PNG per stream message, or per applied live message");
  options->live.source.add(*cmd, "publishers");
  cmd->add_option("--messages", options->live.messages,
                  "With a live source: the messages of the needed groups to apply before the image is written")
      ->check(CLI::PositiveNumber)
      ->capture_default_str();
  cmd->add_option("--timeout", options->live.timeout, "With a live source: seconds to wait for them")
      ->check(CLI::PositiveNumber)
      ->capture_default_str();
  cmd->callback([&run, options] { run = [options] { return runRender(*options); }; });
}

}  // namespace quillon::app
