#pragma once
// Real-time replay of a recorded channel stream, as a viewer that must stay responsive needs it.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "channels/ChannelStream.h"

namespace quillon {

/// Hands out what is due of a recorded stream. A message carries the whole state of the channels
/// it sets, so of the messages due at once that set the same channels only the latest is handed
/// out: a stream faster than the frames costs one decode per group between two frames, however
/// fast it is.
class cStreamReplay {
 public:
  explicit cStreamReplay(std::vector<ChannelStreamRecord> records);

  /// The messages due by `now` (microseconds into the recording) that have not been handed out,
  /// the latest of each group, in stream order. The pointers stay valid for the life of
  /// the replay.
  std::vector<const ChannelStreamRecord*> due(std::uint64_t now);

  bool finished() const { return next == records.size(); }
  /// The position in the recording, counted from 0, of a record that `due` handed out.
  std::size_t indexOf(const ChannelStreamRecord* record) const {
    return static_cast<std::size_t>(record - records.data());
  }
  /// Messages due so far, handed out or superseded by a later one of their group.
  std::size_t passed() const { return next; }
  std::size_t size() const { return records.size(); }

  /// The recorded messages, in stream order.
  const std::vector<ChannelStreamRecord>& messages() const { return records; }
  /// Hands out from message `index` on, as if those before it had passed; for a replay that is
  /// moved to another point of the recording.
  void moveTo(std::size_t index) { next = index < records.size() ? index : records.size(); }
  /// How many messages are recorded at or before `time`.
  std::size_t countUpTo(std::uint64_t time) const;

 private:
  std::vector<ChannelStreamRecord> records;
  std::size_t next = 0;
};

}  // namespace quillon
