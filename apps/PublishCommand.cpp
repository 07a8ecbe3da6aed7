// quillon publish: a recorded stream onto a live bus, with its original timing.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <fstream>
#include <iostream>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "Commands.h"
#include "LiveOptions.h"
#include "StopSignal.h"
#include "channels/ChannelStream.h"
#include "channels/ChannelgroupAddress.h"
#include "live/LivePublisher.h"

namespace quillon::app {
namespace {

using Clock = std::chrono::steady_clock;

struct PublishOptions {
  std::string stream;
  LiveOptions live;
  double speed = 1.0;
  bool loop = false;
  double duration = 0;  // seconds; 0: until the stream ends, or with --loop until stopped
  int waitSubscribers = 0;
  double waitTimeout = 10;
};

struct Outgoing {
  std::uint64_t timeMicroseconds;
  std::string topic;
  std::vector<unsigned char> message;
};

// Sleeps until `when` in short steps, so that a stop request is noticed; false when it came.
bool SleepUntil(Clock::time_point when) {
  while (Clock::now() < when) {
    if (StopRequested()) return false;
    std::this_thread::sleep_until(std::min(when, Clock::now() + std::chrono::milliseconds(100)));
  }
  return !StopRequested();
}

int runPublish(const PublishOptions& options) {
  if (!(options.speed > 0) || !std::isfinite(options.speed)) {
    std::cerr << "quillon publish: --speed must be above 0 (1 is real time, 2 twice as fast)\n";
    return 2;
  }
  if (!options.live.given()) {
    std::cerr << "quillon publish: give --bind ENDPOINT or --connect ENDPOINT\n";
    return 2;
  }
  std::ifstream in(options.stream, std::ios::binary);
  if (!in) {
    std::cerr << "quillon publish: cannot read " << options.stream << '\n';
    return 2;
  }
  std::vector<ChannelStreamRecord> records;
  const auto status = ChannelStreamReader::ReadAll(in, records);
  if (status == ChannelStreamReader::Status::kBadMagic) {
    std::cerr << "quillon publish: " << options.stream << " is not a channel stream\n";
    return 2;
  }
  if (status != ChannelStreamReader::Status::kEnd)
    std::cerr << "quillon publish: " << options.stream << " ends in a cut-short record; publishing the "
              << records.size() << " whole ones\n";

  // Each message goes out under the topic that its own header names.
  std::vector<Outgoing> outgoing;
  std::size_t headless = 0;
  for (ChannelStreamRecord& record : records) {
    const auto address = ReadChannelgroupAddress(record.message.data(), record.message.size());
    if (!address) {
      ++headless;
      continue;
    }
    outgoing.push_back({record.timeMicroseconds, AddressText(*address), std::move(record.message)});
  }
  if (headless > 0)
    std::cerr << "quillon publish: left out " << headless << " messages too short to name their channel group\n";
  if (outgoing.empty()) {
    std::cerr << "quillon publish: " << options.stream << " holds no message to publish\n";
    return 1;
  }

  CatchStopSignals();
  LivePublisher publisher;
  if (const std::string error = AttachLive(publisher, options.live, "quillon publish"); !error.empty()) {
    std::cerr << "quillon publish: " << error << '\n';
    return 1;
  }
  if (options.waitSubscribers > 0) {
    std::set<std::string> unique;
    for (const Outgoing& o : outgoing) unique.insert(o.topic);
    const std::vector<std::string> topics(unique.begin(), unique.end());
    const auto count = static_cast<std::size_t>(options.waitSubscribers);
    const auto deadline = Clock::now() + std::chrono::duration<double>(options.waitTimeout);
    while (!publisher.waitForSubscribers(topics, count, std::chrono::milliseconds(100))) {
      if (StopRequested()) return 1;
      if (Clock::now() >= deadline) {
        std::cerr << "quillon publish: " << options.waitSubscribers << " subscribers did not come for every topic in "
                  << options.waitTimeout << " s\n";
        return 1;
      }
    }
  }

  // A loop starts again one mean interval after the last message of the pass before.
  const std::uint64_t span = outgoing.back().timeMicroseconds;
  const std::uint64_t gap = outgoing.size() > 1 ? span / (outgoing.size() - 1) : 0;
  const Clock::time_point start = Clock::now();
  const auto stopAt =
      options.duration > 0
          ? start + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(options.duration))
          : Clock::time_point::max();
  std::uint64_t sent = 0, offset = 0;
  bool going = true;
  while (going) {
    for (const Outgoing& o : outgoing) {
      const auto due = start + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double, std::micro>(
                                   static_cast<double>(offset + o.timeMicroseconds) / options.speed));
      if (due >= stopAt || !SleepUntil(due)) {
        going = false;
        break;
      }
      publisher.send(o.topic, o.message.data(), o.message.size());
      ++sent;
    }
    going = going && options.loop;
    offset += span + gap;
  }
  std::cout << "Published " << sent << (sent == 1 ? " message" : " messages") << std::endl;
  return 0;
}

}  // namespace

void addPublishCommand(CLI::App& app, Action& run) {
  auto options = std::make_shared<PublishOptions>();
  CLI::App* cmd = app.add_subcommand("publish", "Replay a recorded stream onto a live bus with its original timing");
  cmd->add_option("stream", options->stream, "Channel stream to publish (.qcs)")->required();
  options->live.add(*cmd, "viewers");
  cmd->add_option("--speed", options->speed, "Replay speed, 1 is real time");
  cmd->add_flag("--loop", options->loop, "Start again at the end, until stopped");
  cmd->add_option("--duration", options->duration, "Stop after this many seconds")->check(CLI::NonNegativeNumber);
  cmd->add_option("--wait-subscribers", options->waitSubscribers,
                  "Before the first message, wait until this many subscribers hear every topic of the stream")
      ->check(CLI::NonNegativeNumber);
  cmd->add_option("--wait-timeout", options->waitTimeout, "Give up waiting for subscribers after this many seconds")
      ->check(CLI::PositiveNumber)
      ->capture_default_str();
  cmd->callback([&run, options] { run = [options] { return runPublish(*options); }; });
}

}  // namespace quillon::app
