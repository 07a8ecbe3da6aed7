// quillon view: the interactive viewer, replaying a recorded stream in real time.
#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "Commands.h"
#include "channels/ChannelStream.h"
#include "ui/qt/QuillonWidget.h"

namespace quillon::app {
namespace {

struct ViewOptions {
  std::string document;
  std::string stream;
  double speed = 1.0;
};

bool readFile(const std::string& path, std::string& text) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::ostringstream buffer;
  buffer << in.rdbuf();
  text = buffer.str();
  return true;
}

std::string labelOf(const std::string& xml) {
  static const std::regex label("<Label>([^<]*)</Label>");
  std::smatch match;
  return std::regex_search(xml, match, label) ? match[1].str() : std::string();
}

/// Sends every message that is due by the replay clock, so a stream faster than the frames
/// only has its latest values drawn; counts the messages of the last second for the title.
class Replay {
 public:
  Replay(QuillonWidget& widget, std::vector<ChannelStreamRecord> messages, double factor, QString title)
      : viewer(widget), records(std::move(messages)), speed(factor), label(std::move(title)) {}

  void start() {
    clock.start();
    second.start();
    QObject::connect(&timer, &QTimer::timeout, &timer, [this] { tick(); });
    timer.start(5);
    showRate();
  }

 private:
  void tick() {
    const auto now = static_cast<std::uint64_t>(static_cast<double>(clock.nsecsElapsed()) / 1000.0 * speed);
    while (next < records.size() && records[next].timeMicroseconds <= now) {
      const ChannelStreamRecord& record = records[next++];
      viewer.sendChannels(record.message.data(), record.message.size());
      ++sent;
    }
    if (second.elapsed() >= 1000) showRate();
    if (next == records.size()) {
      timer.stop();
      showRate();
    }
  }

  void showRate() {
    const double rate = second.elapsed() > 0 ? sent * 1000.0 / static_cast<double>(second.elapsed()) : 0.0;
    viewer.window()->setWindowTitle(QStringLiteral("%1 — %2 messages/s").arg(label).arg(rate, 0, 'f', 0));
    sent = 0;
    second.restart();
  }

  QuillonWidget& viewer;
  std::vector<ChannelStreamRecord> records;
  double speed;
  QString label;
  std::size_t next = 0;
  int sent = 0;
  QTimer timer;
  QElapsedTimer clock;
  QElapsedTimer second;
};

int runView(const ViewOptions& options) {
  std::string xml;
  if (!readFile(options.document, xml)) {
    std::cerr << "quillon: cannot read " << options.document << '\n';
    return 2;
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
  if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY")) {
    std::cerr << "quillon: view needs a display; use `quillon render` without one\n";
    return 2;
  }

  int argc = 1;
  char name[] = "quillon";
  char* argv[] = {name, nullptr};
  QApplication application(argc, argv);
  QuillonWidget viewer;
  std::string annotated, groups;
  const std::string errors = viewer.initializeViewer(xml, annotated, groups);
  if (!errors.empty()) std::cerr << errors << '\n';
  viewer.viewAll();
  viewer.resize(960, 720);
  viewer.show();

  const QString label = QString::fromStdString(labelOf(xml));
  Replay replay(viewer, std::move(records), options.speed, label.isEmpty() ? QStringLiteral("Quillon") : label);
  replay.start();
  return application.exec();
}

}  // namespace

void addViewCommand(CLI::App& app, Action& run) {
  static ViewOptions options;
  CLI::App* cmd = app.add_subcommand("view", "Open the interactive viewer and replay a stream in real time");
  cmd->add_option("document", options.document, "Visualisation document (XML)")->required();
  cmd->add_option("--stream", options.stream, "Channel stream to replay (.qcs)");
  cmd->add_option("--speed", options.speed, "Replay speed, 1 is real time")->check(CLI::PositiveNumber);
  cmd->callback([&run] { run = [] { return runView(options); }; });
}

}  // namespace quillon::app
