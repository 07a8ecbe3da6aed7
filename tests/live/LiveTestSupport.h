#pragma once
// Messages, waits and a loopback link shared by the live tests.

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <string_view>
#include <thread>
#include <vector>

#include "../channels/MessageBuilder.h"
#include "live/LiveInbox.h"
#include "live/LivePublisher.h"
#include "live/LiveSubscriber.h"

namespace quillon::test {

/// A message of one group with one 1D channel of nominal quality.
inline std::vector<unsigned char> OneValue(std::string_view name, std::int32_t group, double value) {
  MessageBuilder m;
  m.Header(0x0011, name, group, 1);
  m.U8(1).F64(value).F64(0.0);
  return m.bytes;
}

/// The value of a message made by OneValue.
inline double ValueOf(const std::vector<unsigned char>& message) {
  std::uint64_t bits = 0;
  const std::size_t at = message.size() - 16;
  for (int i = 7; i >= 0; --i) bits = bits << 8 | message[at + static_cast<std::size_t>(i)];
  return std::bit_cast<double>(bits);
}

inline LiveFrame Frame(std::string_view text) {
  return {reinterpret_cast<const unsigned char*>(text.data()), text.size()};
}
inline LiveFrame Frame(const std::vector<unsigned char>& bytes) { return {bytes.data(), bytes.size()}; }

/// Reads into the inbox until `done` holds or `timeout` passes; returns `done()`.
inline bool PumpUntil(LiveSubscriber& subscriber, LiveInbox& inbox, const std::function<bool()>& done,
                      std::chrono::milliseconds timeout = std::chrono::seconds(10)) {
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  while (!done() && std::chrono::steady_clock::now() < deadline)
    if (subscriber.wait(std::chrono::milliseconds(10))) subscriber.drain(inbox, 1000);
  return done();
}

constexpr const char* kAnyPort = "tcp://127.0.0.1:*";

/// A publisher bound to a free loopback port, and a subscriber to the given groups connected to it.
struct Link {
  explicit Link(std::vector<ChannelgroupAddress> groups, std::size_t limit = kLiveMessageLimit)
      : subscriber(limit), inbox(limit) {
    EXPECT_EQ(publisher.attach({LiveAttach::kBind, kAnyPort}), "");
    inbox.setTopics(groups);
    subscriber.subscribe(inbox.topics());
    EXPECT_EQ(subscriber.attach({LiveAttach::kConnect, publisher.lastEndpoint()}), "");
  }
  void Send(std::string_view name, std::int32_t group, double value) {
    const auto m = OneValue(name, group, value);
    publisher.send(AddressText({std::string(name), group}), m.data(), m.size());
  }

  LivePublisher publisher{0};
  LiveSubscriber subscriber;
  LiveInbox inbox;
};

}  // namespace quillon::test
