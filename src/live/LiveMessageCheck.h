#pragma once
// The wire rules that a message from a live source must pass before the viewer may apply it.

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "quillon/quillon.h"

namespace quillon {

/// One frame of a received ZeroMQ message.
using LiveFrame = std::span<const unsigned char>;

/// The largest channel-group message taken from a live source, as SendChannels_v1 takes it.
inline constexpr std::size_t kLiveMessageLimit = static_cast<std::size_t>(QUILLON_MAX_MESSAGE_BYTES);

/// Why a received message was dropped.
enum class LiveDrop { kFrameCount, kTooLarge, kTopicMismatch, kUnsubscribed };
inline constexpr std::size_t kLiveDropKinds = 4;

/// True when `topic` is exactly "name[group]" for the name and group in the message's header.
bool TopicMatchesHeader(std::string_view topic, LiveFrame message);

/// Checks a message of `frameCount` frames whose first two are `topic` and `message`. Nothing
/// when it keeps the rules and may be applied; `subscribed` says whether the topic is one the
/// receiver asked for (a subscription is only a prefix match).
template <class Subscribed>
std::optional<LiveDrop> CheckLiveMessage(std::size_t frameCount, LiveFrame topic, LiveFrame message, std::size_t limit,
                                         Subscribed subscribed) {
  if (frameCount != 2) return LiveDrop::kFrameCount;
  if (message.size() > limit) return LiveDrop::kTooLarge;
  const std::string_view text(reinterpret_cast<const char*>(topic.data()), topic.size());
  if (!TopicMatchesHeader(text, message)) return LiveDrop::kTopicMismatch;
  if (!subscribed(text)) return LiveDrop::kUnsubscribed;
  return std::nullopt;
}

}  // namespace quillon
