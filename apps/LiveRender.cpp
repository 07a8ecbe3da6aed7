#include "LiveRender.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <iostream>

#include "Diagnostics.h"
#include "RenderSupport.h"
#include "StopSignal.h"
#include "channels/ChannelgroupAddress.h"
#include "live/LiveInbox.h"
#include "live/LiveSubscriber.h"

namespace quillon::app {
namespace {

using Clock = std::chrono::steady_clock;

std::string FramePath(const std::string& folder, std::uint64_t index) {
  char name[32];
  std::snprintf(name, sizeof name, "frame-%05llu.png", static_cast<unsigned long long>(index));
  return (std::filesystem::path(folder) / name).string();
}

}  // namespace

int RenderLive(OffscreenViewer& viewer, const std::string& neededGroups, const LiveRenderOptions& options,
               SendErrorLog& errors) {
  LiveInbox inbox;
  inbox.setTopics(ParseNeededGroups(neededGroups));
  if (inbox.topics().empty()) {
    std::cerr << "quillon render: the document needs no channel groups, so there is nothing to wait for\n";
    return 2;
  }
  if (!options.frames.empty()) {
    std::error_code ec;
    std::filesystem::create_directories(options.frames, ec);
  }
  CatchStopSignals();
  LiveSubscriber subscriber;
  subscriber.subscribe(inbox.topics());
  if (const std::string error = AttachLive(subscriber, options.source, "quillon render"); !error.empty()) {
    std::cerr << "quillon render: " << error << '\n';
    return 1;
  }

  const auto deadline =
      Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(options.timeout));
  std::uint64_t applied = 0;
  bool written = true;
  while (applied < options.messages && written && !StopRequested()) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
    if (left.count() <= 0) break;
    if (!subscriber.wait(std::min(left, std::chrono::milliseconds(100)))) continue;
    // What came while the last image was drawn is read before anything is applied, so only
    // the newest message of each group is.
    subscriber.drain(inbox, 1000);
    inbox.apply(
        [&](const std::vector<unsigned char>& message) {
          errors.note(applied, message, viewer.send(message));
          if (!options.frames.empty() && written) {
            const std::string path = FramePath(options.frames, applied);
            written = viewer.writePng(path);
            if (!written) std::cerr << "quillon render: cannot write " << path << '\n';
          }
          ++applied;
        },
        options.messages - applied);
  }
  if (!written) return 1;
  errors.report(std::cerr, "quillon render");
  const LiveCounts& counts = inbox.counts();
  if (applied < options.messages) {
    std::cerr << "quillon render: " << (StopRequested() ? "stopped" : "the time-out passed") << " after " << applied
              << " of " << options.messages << " messages; " << counts.received << " arrived";
    if (counts.droppedTotal() > 0) std::cerr << ", " << counts.droppedTotal() << " more were dropped";
    std::cerr << '\n';
    return 1;
  }
  if (!options.output.empty()) {
    if (!viewer.writePng(options.output)) {
      std::cerr << "quillon render: cannot write " << options.output << '\n';
      return 1;
    }
    std::cout << "Wrote " << options.output << '\n';
  }
  if (!options.frames.empty()) std::cout << "Wrote " << applied << " frames to " << options.frames << '\n';
  return 0;
}

}  // namespace quillon::app
