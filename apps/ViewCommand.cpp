// quillon view: the interactive viewer, replaying a recorded stream or following a live one.
#include <QApplication>
#include <QElapsedTimer>
#include <QStatusBar>
#include <QStringDecoder>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "Commands.h"
#include "Diagnostics.h"
#include "Framing.h"
#include "LiveView.h"
#include "RenderSupport.h"
#include "Replay.h"
#include "ViewerWindow.h"
#include "channels/ChannelStream.h"
#include "control/QuillonComponent.h"
#include "ui/qt/cRenderAreaPanel.h"
#include "ui/qt/cViewerHolderWnd.h"
#include "widget/QuillonWidget.h"

namespace quillon::app {
namespace {

struct ViewOptions {
  std::string document;
  std::string stream;
  double speed = 1.0;
  double duration = 0;  // seconds; 0 runs until the window is closed
  bool reportFps = false;
  std::string cameraPosition, cameraOrientation;  // empty: fit the view to the scene
  std::string screenshots = ".";                  // where the screenshots go
  LiveOptions live;
};

// The document's label in the encoding that its XML declaration names (UTF-8 when it names none).
QString labelOf(const std::string& xml) {
  static const std::regex label("<Label>([^<]*)</Label>");
  static const std::regex declaration(R"(^\s*<\?xml[^>]*encoding\s*=\s*["']([A-Za-z0-9._-]+)["'])");
  std::smatch match;
  if (!std::regex_search(xml, match, label)) return {};
  const QByteArray text = QByteArray::fromStdString(match[1].str());
  std::smatch named;
  QString decoded = QString::fromUtf8(text);
  if (std::regex_search(xml, named, declaration)) {
    const QString encoding = QString::fromStdString(named[1].str()).toLower();
    if (encoding == QLatin1String("iso-8859-1") || encoding == QLatin1String("latin1") ||
        encoding == QLatin1String("iso_8859-1") || encoding == QLatin1String("l1"))
      decoded = QString::fromLatin1(text);
    else if (auto known = QStringConverter::encodingForName(named[1].str().c_str()))
      decoded = QStringDecoder(*known).decode(text);
  }
  for (auto [entity, character] :
       {std::pair{"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&apos;", "'"}, {"&amp;", "&"}})
    decoded.replace(QLatin1String(entity), QLatin1String(character));
  return decoded.trimmed();
}

/// Measures how long input waits for the event loop: a thread of its own posts an event every
/// few milliseconds, as the window system's input arrives whatever the loop is doing, and the
/// loop stamps its delivery.
class InputProbe final : public QObject {
 public:
  InputProbe() {
    poster = std::thread([this] {
      while (!stop) {
        QCoreApplication::postEvent(this, new Stamp(steady::now()));
        std::this_thread::sleep_for(std::chrono::milliseconds(7));
      }
    });
  }
  ~InputProbe() override {
    stop = true;
    poster.join();
    QCoreApplication::removePostedEvents(this);
  }

  long events = 0;
  double longestWaitMs = 0;
  double totalWaitMs = 0;

 protected:
  bool event(QEvent* e) override {
    if (e->type() != kStampType) return QObject::event(e);
    const double waited =
        std::chrono::duration<double, std::milli>(steady::now() - static_cast<Stamp*>(e)->posted).count();
    ++events;
    totalWaitMs += waited;
    longestWaitMs = std::max(longestWaitMs, waited);
    return true;
  }

 private:
  using steady = std::chrono::steady_clock;
  static constexpr QEvent::Type kStampType = static_cast<QEvent::Type>(QEvent::User + 81);
  struct Stamp final : QEvent {
    explicit Stamp(steady::time_point at) : QEvent(kStampType), posted(at) {}
    steady::time_point posted;
  };

  std::atomic<bool> stop{false};
  std::thread poster;
};

/// Times every frame of the top-level windows from the update request to the end of its
/// presentation, which the scene's draw alone does not cover.
class ViewerApplication final : public QApplication {
 public:
  using QApplication::QApplication;

  long frames = 0;
  double totalMs = 0;
  double longestMs = 0;

  bool notify(QObject* receiver, QEvent* event) override {
    if (event->type() != QEvent::UpdateRequest || !receiver->isWidgetType() ||
        !static_cast<QWidget*>(receiver)->isWindow())
      return QApplication::notify(receiver, event);
    QElapsedTimer clock;
    clock.start();
    const bool done = QApplication::notify(receiver, event);
    const double ms = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    ++frames;
    totalMs += ms;
    longestMs = std::max(longestMs, ms);
    return done;
  }
};

double mean(double total, long count) { return count > 0 ? total / static_cast<double>(count) : 0.0; }

void reportFrames(const cRenderAreaPanel::FrameStats& draws, const ViewerApplication& frames, const Replay& replay,
                  const InputProbe& probe, double seconds) {
  std::printf("view: %.1f s, %ld frames drawn, %.1f frames/s\n", seconds, draws.frames,
              static_cast<double>(draws.frames) / seconds);
  std::printf(
      "view: scene draw %.1f ms mean, %.1f ms longest; whole frame with presenting %.1f ms mean, %.1f ms longest\n",
      mean(draws.totalMs, draws.frames), draws.longestMs, mean(frames.totalMs, frames.frames), frames.longestMs);
  std::printf("view: %zu messages received (%.0f/s), %zu decoded\n", replay.messagesDue(),
              static_cast<double>(replay.messagesDue()) / seconds, replay.messagesDecoded());
  std::printf("view: %ld input events, wait %.1f ms mean, %.1f ms longest\n", probe.events,
              mean(probe.totalWaitMs, probe.events), probe.longestWaitMs);
  std::fflush(stdout);
}

// How long the report waits before it starts measuring.
constexpr int kSettleMs = 500;

int runView(const ViewOptions& options) {
  if (!(options.speed > 0) || !std::isfinite(options.speed)) {
    std::cerr << "quillon view: --speed must be above 0 (1 is real time, 2 twice as fast)\n";
    return 2;
  }
  std::string xml;
  if (!ReadFile(options.document, xml)) {
    std::cerr << "quillon: cannot read " << options.document << '\n';
    return 2;
  }
  // Checked before any window opens, so a refused document never shows an empty viewer.
  const LoadOutcome checked = CheckDocument(xml);
  if (!checked.loaded()) {
    std::cerr << options.document << ": bad\n";
    PrintErrorList(std::cerr, checked.errors);
    return 1;
  }
  std::vector<ChannelStreamRecord> records;
  if (!options.stream.empty()) {
    std::ifstream in(options.stream, std::ios::binary);
    if (!in) {
      std::cerr << "quillon: cannot read " << options.stream << '\n';
      return 2;
    }
    const ChannelStreamReader::Status status = ChannelStreamReader::ReadAll(in, records);
    if (status == ChannelStreamReader::Status::kBadMagic) {
      std::cerr << "quillon: " << options.stream << " is not a channel stream\n";
      return 2;
    }
    if (status != ChannelStreamReader::Status::kEnd)
      std::cerr << "quillon: " << options.stream << " ends in a cut-short record; replaying the " << records.size()
                << " whole ones\n";
  }
  if (options.live.given() && !options.stream.empty()) {
    std::cerr << "quillon view: give either --stream FILE.qcs or a live source (--connect, --bind)\n";
    return 2;
  }
  if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY")) {
    std::cerr << "quillon: view needs a display; use `quillon render` without one\n";
    return 2;
  }

  int argc = 1;
  char name[] = "quillon";
  char* argv[] = {name, nullptr};
  ViewerApplication application(argc, argv);
  const QString label = labelOf(xml);
  const QString title = label.isEmpty() ? QStringLiteral("Quillon") : label;
  ViewerWindow window(title, QString::fromStdString(options.screenshots));
  QuillonWidget& viewer = window.viewer();
  std::string annotated, groups;
  const std::string errors = viewer.initializeViewer(xml, annotated, groups);
  if (!errors.empty()) std::cerr << errors << '\n';
  // Unless a camera is given, the view takes in the whole scene through the whole stream.
  if (options.cameraPosition.empty())
    viewer.component().SetCameraPosition(FrameThreeQuarter(MotionBounds(xml, records), 4.0 / 3.0));
  else
    viewer.component().SetCameraPosition(
        {options.cameraPosition, options.cameraOrientation, "0.01", "100.0", "1.0", "1.0"});
  // The viewer gets about 960 × 720 of it; the bars take the rest.
  window.resize(960, 810);
  if (options.live.given()) {
    if (const std::string error = ShowLive(viewer, options.live, *window.statusBar()); !error.empty()) {
      std::cerr << "quillon view: " << error << '\n';
      return 1;
    }
  }

  // Going back in the recording starts again from the document as it loaded.
  const bool recorded = !options.stream.empty();
  Replay replay(viewer, std::move(records), options.speed, title, checked.groups, [&viewer, &xml] {
    std::string reloadedAnnotated, reloadedGroups;
    viewer.loadDocument(xml, reloadedAnnotated, reloadedGroups);
  });
  if (recorded)
    window.setReplay(replay, replay.messages());
  else
    window.plotLive();
  window.show();
  std::unique_ptr<InputProbe> probe;
  cRenderAreaPanel* area = viewer.holderWindow()->renderAreaPanel();
  QElapsedTimer elapsed;
  replay.start();
  if (options.reportFps) {
    // Measured once the window is up and its first frames, which set up the GL state, are drawn.
    QTimer::singleShot(kSettleMs, &application, [&] {
      area->resetFrameStats();
      replay.restartCounts();
      application.frames = 0;
      application.totalMs = application.longestMs = 0;
      probe = std::make_unique<InputProbe>();
      elapsed.start();
    });
  }
  if (options.duration > 0)
    QTimer::singleShot(static_cast<int>(options.duration * 1000) + (options.reportFps ? kSettleMs : 0), &application,
                       &QApplication::quit);
  const int status = application.exec();
  replay.reportErrors();
  ReportLive(viewer);
  if (probe)
    reportFrames(area->frameStats(), application, replay, *probe, static_cast<double>(elapsed.elapsed()) / 1000.0);
  return status;
}

}  // namespace

int RunViewer(const std::string& document, const std::string& stream, double speed, const std::string& position,
              const std::string& orientation) {
  ViewOptions options;
  options.document = document;
  options.stream = stream;
  options.speed = speed;
  options.cameraPosition = position;
  options.cameraOrientation = orientation;
  return runView(options);
}

void addViewCommand(CLI::App& app, Action& run) {
  static ViewOptions options;
  CLI::App* cmd = app.add_subcommand("view", "Open the interactive viewer and replay a stream in real time");
  cmd->add_option("document", options.document, "Visualisation document (XML)")->required();
  cmd->add_option("--stream", options.stream, "Channel stream to replay (.qcs)");
  cmd->add_option("--speed", options.speed, "Replay speed, 1 is real time");
  cmd->add_option("--screenshots", options.screenshots,
                  "Folder for the screenshots (Ctrl+S), the current one by default");
  cmd->add_option("--duration", options.duration, "Close the viewer after this many seconds")
      ->check(CLI::NonNegativeNumber);
  cmd->add_flag("--report-fps", options.reportFps,
                "On closing, print the frames drawn, the messages received and how long input waited");
  options.live.add(*cmd, "publishers");
  cmd->callback([&run] { run = [] { return runView(options); }; });
}

}  // namespace quillon::app
