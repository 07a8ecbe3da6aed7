// quillon record: what a live bus carries, into a channel stream file with the receive times.
#include <algorithm>
#include <chrono>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Commands.h"
#include "Diagnostics.h"
#include "LiveOptions.h"
#include "StopSignal.h"
#include "channels/ChannelStream.h"
#include "channels/ChannelgroupAddress.h"
#include "live/LiveInbox.h"
#include "live/LiveSubscriber.h"

namespace quillon::app {
namespace {

using Clock = std::chrono::steady_clock;

struct RecordOptions {
  LiveOptions live;
  std::vector<std::string> topics;
  std::string document;
  std::string output;
  double duration = 0;         // seconds; 0: no limit
  std::uint64_t messages = 0;  // 0: no limit
};

// "name[group]" with the group in plain decimal, as a topic on the bus is written.
bool ReadTopic(const std::string& text, std::string& topic) {
  const std::size_t open = text.rfind('[');
  if (open == std::string::npos || text.size() < open + 3 || text.back() != ']') return false;
  const auto groups =
      ParseNeededGroups("[" + text.substr(0, open) + ", " + text.substr(open + 1, text.size() - open - 2) + "]");
  if (groups.size() != 1) return false;
  topic = AddressText(groups.front());
  return true;
}

const char* DropReason(LiveDrop why) {
  switch (why) {
    case LiveDrop::kFrameCount:
      return "not of two frames";
    case LiveDrop::kTooLarge:
      return "over the size limit";
    case LiveDrop::kTopicMismatch:
      return "with a topic that did not match its header";
    case LiveDrop::kUnsubscribed:
      return "for a topic not asked for";
  }
  return "";
}

int runRecord(const RecordOptions& options) {
  if (!options.live.given()) {
    std::cerr << "quillon record: give --connect ENDPOINT or --bind ENDPOINT\n";
    return 2;
  }
  std::set<std::string, std::less<>> topics;
  for (const std::string& text : options.topics) {
    std::string topic;
    if (!ReadTopic(text, topic)) {
      std::cerr << "quillon record: '" << text << "' is no topic; a topic is name[group], e.g. Arm[1]\n";
      return 2;
    }
    topics.insert(topic);
  }
  if (!options.document.empty()) {
    std::string xml;
    if (!ReadFile(options.document, xml)) {
      std::cerr << "quillon: cannot read " << options.document << '\n';
      return 2;
    }
    const LoadOutcome outcome = CheckDocument(xml);
    if (!outcome.loaded()) {
      std::cerr << options.document << ": bad\n";
      PrintErrorList(std::cerr, outcome.errors);
      return 1;
    }
    for (const ChannelgroupAddress& group : ParseNeededGroups(outcome.groups)) topics.insert(AddressText(group));
  }
  if (topics.empty()) {
    std::cerr << "quillon record: give the topics to record with --topic NAME[GROUP] or --doc DOC.xml\n";
    return 2;
  }

  std::ofstream out(options.output, std::ios::binary | std::ios::trunc);
  if (!out) {
    std::cerr << "quillon record: cannot write " << options.output << '\n';
    return 2;
  }
  ChannelStreamWriter writer(out);
  CatchStopSignals();
  LiveSubscriber subscriber;
  subscriber.subscribe({topics.begin(), topics.end()});
  if (const std::string error = AttachLive(subscriber, options.live, "quillon record"); !error.empty()) {
    std::cerr << "quillon record: " << error << '\n';
    return 1;
  }

  const Clock::time_point start = Clock::now();
  const auto stopAt =
      options.duration > 0
          ? start + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(options.duration))
          : Clock::time_point::max();
  std::optional<Clock::time_point> first;  // the recording's times count from its first message
  std::uint64_t recorded = 0;
  LiveCounts counts;
  LiveMessage message;
  const auto subscribed = [&](std::string_view topic) { return topics.contains(topic); };
  while ((options.messages == 0 || recorded < options.messages) && !StopRequested()) {
    const auto now = Clock::now();
    if (now >= stopAt) break;
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(stopAt - now);
    if (!subscriber.wait(std::min(left, std::chrono::milliseconds(100)))) continue;
    while ((options.messages == 0 || recorded < options.messages) && subscriber.receive(message)) {
      const auto arrived = Clock::now();
      if (const auto drop = CheckLiveMessage(message.frames, message.topicFrame(), message.payloadFrame(),
                                             kLiveMessageLimit, subscribed)) {
        ++counts.dropped[static_cast<std::size_t>(*drop)];
        continue;
      }
      if (!first) first = arrived;
      const auto micros = std::chrono::duration_cast<std::chrono::microseconds>(arrived - *first).count();
      if (!writer.Write(static_cast<std::uint64_t>(micros), message.payload.data<unsigned char>(),
                        message.payload.size())) {
        std::cerr << "quillon record: cannot write " << options.output << '\n';
        return 1;
      }
      ++recorded;
    }
  }
  out.flush();
  if (!writer.Good() || !out) {
    std::cerr << "quillon record: cannot write " << options.output << '\n';
    return 1;
  }
  for (std::size_t i = 0; i < counts.dropped.size(); ++i)
    if (counts.dropped[i] > 0)
      std::cerr << "quillon record: dropped " << counts.dropped[i] << " messages "
                << DropReason(static_cast<LiveDrop>(i)) << '\n';
  std::cout << "Recorded " << recorded << (recorded == 1 ? " message" : " messages") << " to " << options.output
            << std::endl;
  if (options.messages > 0 && recorded < options.messages) {
    std::cerr << "quillon record: stopped after " << recorded << " of " << options.messages << " messages\n";
    return 1;
  }
  return 0;
}

}  // namespace

void addRecordCommand(CLI::App& app, Action& run) {
  auto options = std::make_shared<RecordOptions>();
  CLI::App* cmd = app.add_subcommand("record", "Record what a live bus carries into a channel stream (.qcs)");
  options->live.add(*cmd, "publishers");
  cmd->add_option("--topic", options->topics, "A topic to record, NAME[GROUP] (e.g. Arm[1]); may repeat");
  cmd->add_option("--doc", options->document, "Record the channel groups that this document needs");
  cmd->add_option("-o,--output", options->output, "Channel stream file to write")->required();
  cmd->add_option("--duration", options->duration, "Stop after this many seconds")->check(CLI::NonNegativeNumber);
  cmd->add_option("--messages", options->messages, "Stop after this many messages");
  cmd->callback([&run, options] { run = [options] { return runRecord(*options); }; });
}

}  // namespace quillon::app
