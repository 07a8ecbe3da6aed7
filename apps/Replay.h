#pragma once
// The replay of a recorded stream in quillon view: in real time at any speed, paused, stepped
// message by message, or moved to any point of the recording.

#include <QElapsedTimer>
#include <QString>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "Diagnostics.h"
#include "channels/ChannelStream.h"
#include "ui/cStreamReplay.h"

namespace quillon {
class QuillonWidget;
}

namespace quillon::app {

/// Sends what is due by the replay clock on a short timer, never more than the latest message of
/// each group at a time, so the event loop is never held up by the stream and a stream faster
/// than the frames only has its latest values drawn. The title shows the messages per second.
///
/// Moved to another point, it applies every message up to there in order, as playing would
/// have: a frozen node keeps the position of its last good value, however far back that was.
/// Going back starts again from the document as loaded, which `reload` brings back.
class Replay {
 public:
  Replay(QuillonWidget& widget, std::vector<ChannelStreamRecord> messages, double speed, QString title,
         std::string_view neededGroups, std::function<void()> reload);

  /// Plays from the start.
  void start();
  void play();
  void pause();
  bool playing() const { return running; }
  /// 1 is real time.
  void setSpeed(double factor);
  double speed() const { return factor; }
  /// Plays again from the start whenever the end is reached.
  void setLoop(bool on) { looping = on; }
  bool loops() const { return looping; }

  /// Microseconds into the recording: where the replay clock stands.
  std::uint64_t position() const;
  /// The time of the last message.
  std::uint64_t duration() const;
  /// The scene shows the recording after this many of its messages.
  std::size_t applied() const { return stream.passed(); }
  std::size_t size() const { return stream.size(); }
  const std::vector<ChannelStreamRecord>& messages() const { return stream.messages(); }

  /// Shows the scene as it is at `time` into the recording; goes on playing if it was.
  void seek(std::uint64_t time);
  /// Shows the scene after the first `count` messages, with the clock at the last one's time.
  void seekToMessage(std::size_t count);
  /// One message on, or back; either pauses.
  void stepForward();
  void stepBack();

  /// Counted from the last call of restartCounts.
  std::size_t messagesDue() const { return stream.passed() - dueBefore; }
  std::size_t messagesDecoded() const { return decoded - decodedBefore; }
  void restartCounts() {
    dueBefore = stream.passed();
    decodedBefore = decoded;
  }
  /// Says once which messages the viewer did not take cleanly.
  void reportErrors();

 private:
  static constexpr int kTickMs = 5;

  void tick();
  /// Makes the first `count` messages the applied ones.
  void moveTo(std::size_t count);
  void apply(std::size_t index);
  void setClock(std::uint64_t at);
  void showRate();

  QuillonWidget& viewer;
  cStreamReplay stream;
  SendErrorLog errors;
  std::function<void()> reload;
  bool reported = false;
  bool running = false;
  bool looping = false;
  double factor;
  QString label;
  std::uint64_t base = 0;  // the position when the clock was last started
  std::size_t noted = 0;   // messages before this one have been noted in the error log
  std::size_t sent = 0;
  std::size_t decoded = 0;
  std::size_t dueBefore = 0;
  std::size_t decodedBefore = 0;
  QTimer timer;
  QElapsedTimer clock;
  QElapsedTimer second;
};

}  // namespace quillon::app
