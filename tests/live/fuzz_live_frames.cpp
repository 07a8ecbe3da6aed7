// Drives the live inbox with arbitrary ZeroMQ messages: any number of frames of any size, with
// any topic. The input is a run of messages, each a frame count byte (its top bit also applies
// what waits) and that many frames, each a u16 LE length and its bytes; a length that runs past
// the end takes what is left.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "live/LiveInbox.h"

namespace {

double sink = 0;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillon;
  LiveInbox inbox(512);
  inbox.setTopics({{"Arm", 1}, {"Probe1", -7}, {"", 0}, {"A[1]", 2}});
  std::size_t at = 0;
  while (at < size) {
    const std::uint8_t head = data[at++];
    const std::size_t frameCount = head & 0x7F;
    std::vector<LiveFrame> frames;
    for (std::size_t f = 0; f < frameCount && at < size; ++f) {
      std::size_t length = data[at];
      if (at + 1 < size) length |= static_cast<std::size_t>(data[at + 1]) << 8;
      at = at + 2 < size ? at + 2 : size;
      if (length > size - at) length = size - at;
      frames.emplace_back(data + at, length);
      at += length;
    }
    const LiveFrame topic = frames.size() > 0 ? frames[0] : LiveFrame();
    const LiveFrame message = frames.size() > 1 ? frames[1] : LiveFrame();
    inbox.offer(frameCount, topic, message);
    if (head & 0x80) inbox.apply([](const std::vector<unsigned char>& m) { sink += static_cast<double>(m.size()); });
  }
  inbox.apply([](const std::vector<unsigned char>& m) { sink += static_cast<double>(m.size()); });
  const LiveCounts& c = inbox.counts();
  if (c.applied + c.conflated != c.received) __builtin_trap();
  return 0;
}
