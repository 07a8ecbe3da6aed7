// The live path end to end, in two processes on one machine: a publisher sends channel-group
// messages over TCP on loopback, and a viewer (the offscreen C interface) applies them to a
// scene while it draws. Driven by live-throughput.sh.
//   live_bench view CHANNELS SECONDS [FPS]            binds 127.0.0.1, says where, then reports
//   live_bench publish ENDPOINT CHANNELS RATE SECONDS  RATE messages/s; 0 sends as fast as it can
// Channel 0 of each message carries its send time in microseconds of the monotonic clock,
// which both processes share, so the viewer reads the latency off the value it applies.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "live/LiveInbox.h"
#include "live/LivePublisher.h"
#include "live/LiveSubscriber.h"
#include "quillon/quillon.h"

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr const char* kName = "Bench";
constexpr int kGroup = 1;
constexpr int kParts = 100;          // the channels drive the materials of this many boxes
constexpr std::size_t kHeader = 15;  // flags, name length, "Bench", group, count
constexpr std::size_t kRecord = 9;   // type byte and one double
// Messages read between two applies, as the Qt feed reads between two turns of its loop.
constexpr std::size_t kReadBudget = 256;

double NowMicros() {
  return static_cast<double>(
      std::chrono::duration_cast<std::chrono::microseconds>(Clock::now().time_since_epoch()).count());
}

void Put(std::vector<unsigned char>& m, std::uint64_t v, int bytes) {
  for (int i = 0; i < bytes; ++i) m.push_back(static_cast<unsigned char>(v >> (8 * i)));
}

// Values only (flags 0x0001): channel 0 is `stamp`, the others a slow wave.
std::vector<unsigned char> Message(int channels, long step, double stamp) {
  std::vector<unsigned char> m;
  m.reserve(kHeader + kRecord * static_cast<std::size_t>(channels));
  Put(m, 0x0001, 2);
  Put(m, std::strlen(kName), 2);
  m.insert(m.end(), kName, kName + std::strlen(kName));
  Put(m, kGroup, 4);
  Put(m, static_cast<std::uint64_t>(channels), 2);
  for (int c = 0; c < channels; ++c) {
    const double value = c == 0 ? stamp : 0.5 + 0.5 * std::sin(0.01 * static_cast<double>(step + c));
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    m.push_back(1);
    Put(m, bits, 8);
  }
  return m;
}

double StampOf(const std::vector<unsigned char>& m) {
  double stamp = 0;
  std::memcpy(&stamp, m.data() + kHeader + 1, sizeof stamp);
  return stamp;
}

void Restamp(std::vector<unsigned char>& m, double stamp) { std::memcpy(m.data() + kHeader + 1, &stamp, sizeof stamp); }

// A round of messages made once, so that the publisher spends its time sending, not computing.
std::vector<std::vector<unsigned char>> Round(int channels) {
  std::vector<std::vector<unsigned char>> messages;
  for (long i = 0; i < 64; ++i) messages.push_back(Message(channels, i, 0));
  return messages;
}

std::string Document(int channels) {
  std::string scene, routes;
  for (int i = 0; i < kParts; ++i)
    scene += "Transform { translation " + std::to_string(i % 10 * 0.03) + " " + std::to_string(i / 10 * 0.03) +
             " 0 children [ Shape { appearance Appearance { material DEF M" + std::to_string(i) +
             " Material { } } geometry Box { size 0.02 0.02 0.02 } } ] }\n";
  // Channel 0 carries the time stamp; it drives nothing.
  for (int c = 1; c < channels; ++c)
    routes += "<ExternRoute from=\"Bench[1][" + std::to_string(c) + "][1D]\" to=\"M" + std::to_string(c % kParts) +
              ".diffuseColor\"/>\n";
  return "<?xml version=\"1.0\"?>\n<Visualisation><Version>1.0</Version><Scene format=\"VRML97\"><![CDATA["
         "#VRML V2.0 utf8\n" +
         scene + "]]></Scene>\n" + routes + "</Visualisation>\n";
}

long ResidentKiB() {
  std::ifstream statm("/proc/self/statm");
  long pages = 0, resident = 0;
  statm >> pages >> resident;
  return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

// Milliseconds counted into fixed bins (1 us to 100 ms, then 1 ms to 10 s), all touched at
// the start, so that the measurement adds nothing to the resident memory that it watches.
class Histogram {
 public:
  void add(double ms) {
    const double us = std::max(ms * 1000.0, 0.0);
    const std::size_t bin = us < kFine ? static_cast<std::size_t>(us)
                                       : kFine + std::min(static_cast<std::size_t>((us - kFine) / 1000.0), kCoarse - 1);
    ++bins[bin];
    ++count;
  }
  double percentile(double p) const {
    const auto rank = static_cast<std::uint64_t>(p * static_cast<double>(count > 0 ? count - 1 : 0));
    std::uint64_t seen = 0;
    for (std::size_t bin = 0; bin < bins.size(); ++bin) {
      seen += bins[bin];
      if (seen > rank)
        return bin < kFine ? static_cast<double>(bin) / 1000.0 : static_cast<double>(bin - kFine) + kFine / 1000.0;
    }
    return 0;
  }

 private:
  static constexpr std::size_t kFine = 100000, kCoarse = 9900;
  std::vector<std::uint32_t> bins = std::vector<std::uint32_t>(kFine + kCoarse, 0);
  std::uint64_t count = 0;
};

struct Viewer {
  explicit Viewer(int channels) : ctrl(quillon_create()) {
    quillon_create_window(ctrl, 0, 640, 480);
    const std::string xml = Document(channels);
    quillon_load_document(ctrl, xml.c_str(), nullptr, nullptr);
    quillon_ViewAll_v2(ctrl);
  }
  ~Viewer() {
    quillon_destroy_window(ctrl);
    quillon_destroy(ctrl);
  }
  bool send(const std::vector<unsigned char>& m) {
    QuillonBytes r = quillon_SendChannels_v1(ctrl, m.data(), static_cast<long>(m.size()));
    quillon_free(r.data);
    return r.size == 0;
  }
  void draw() { quillon_render_rgba(ctrl, pixels.data(), pixels.size()); }

  QuillonCtrl* ctrl;
  std::vector<unsigned char> pixels = std::vector<unsigned char>(640 * 480 * 4);
};

// The same messages through SendChannels_v1 in this process, with nothing else going on.
double InProcessRate(Viewer& viewer, int channels) {
  const std::vector<std::vector<unsigned char>> messages = Round(channels);
  long sent = 0;
  const auto start = Clock::now();
  while (Clock::now() - start < 2s)
    for (const auto& m : messages) sent += viewer.send(m) ? 1 : 0;
  return static_cast<double>(sent) / std::chrono::duration<double>(Clock::now() - start).count();
}

int View(int channels, double seconds, double fps) {
  using namespace quillon;
  Viewer viewer(channels);
  // Measured first, before the publisher runs, so that the two do not share the processors.
  const double inProcess = InProcessRate(viewer, channels);
  LiveSubscriber subscriber;
  LiveInbox inbox;
  inbox.setTopics({{kName, kGroup}});
  subscriber.subscribe(inbox.topics());
  if (!subscriber.attach({LiveAttach::kBind, "tcp://127.0.0.1:*"}).empty()) return 1;
  std::printf("endpoint %s\n", subscriber.lastEndpoint().c_str());
  std::fflush(stdout);

  Histogram latencies, draws;
  long frames = 0, refused = 0;
  long residentAtMinute = 0, residentMost = 0, residentAfterMinuteMost = 0;
  const auto frameEvery = std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(1.0 / fps));
  Clock::time_point start{}, nextFrame{}, nextSample{};
  // The clock starts with the first message, so the publisher's start-up is not counted.
  while (inbox.counts().received == 0)
    if (subscriber.wait(100ms)) subscriber.drain(inbox, 10000);
  start = Clock::now();
  nextFrame = start;
  nextSample = start + 1s;
  const auto end = start + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
  while (Clock::now() < end) {
    const auto until = std::min(nextFrame, end);
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(until - Clock::now());
    if (subscriber.wait(std::max(left, 0ms))) subscriber.drain(inbox, kReadBudget);
    inbox.apply([&](const std::vector<unsigned char>& m) {
      if (!viewer.send(m)) ++refused;
      latencies.add((NowMicros() - StampOf(m)) / 1000.0);
    });
    const auto now = Clock::now();
    if (now >= nextFrame) {
      viewer.draw();
      draws.add(std::chrono::duration<double, std::milli>(Clock::now() - now).count());
      ++frames;
      nextFrame += frameEvery;
      if (nextFrame < now) nextFrame = now + frameEvery;
    }
    if (now >= nextSample) {
      const long resident = ResidentKiB();
      residentMost = std::max(residentMost, resident);
      if (now - start >= 60s) {
        if (residentAtMinute == 0) residentAtMinute = resident;
        residentAfterMinuteMost = std::max(residentAfterMinuteMost, resident);
      }
      nextSample += 1s;
    }
  }
  const double elapsed = std::chrono::duration<double>(Clock::now() - start).count();
  const LiveCounts& c = inbox.counts();
  const double received = static_cast<double>(c.received) / elapsed;
  const double applied = static_cast<double>(c.applied) / elapsed;
  std::printf("live: %d channels a message, %.0f s, %ld frames drawn (%.0f/s), a frame p50 %.1f ms, p99 %.1f ms\n",
              channels, elapsed, frames, static_cast<double>(frames) / elapsed, draws.percentile(0.5),
              draws.percentile(0.99));
  std::printf(
      "live: received %.0f messages/s, applied %.0f messages/s = %.2f M channel values/s; %llu conflated, "
      "%llu dropped, %ld refused\n",
      received, applied, applied * channels / 1e6, static_cast<unsigned long long>(c.conflated),
      static_cast<unsigned long long>(c.droppedTotal()), refused);
  std::printf("live: latency from send to scene p50 %.2f ms, p99 %.2f ms, max %.2f ms\n", latencies.percentile(0.5),
              latencies.percentile(0.99), latencies.percentile(1.0));
  std::printf(
      "live: in process, with no drawing, the same messages apply at %.0f messages/s = %.2f M values/s; "
      "received live / in process = %.2f\n",
      inProcess, inProcess * channels / 1e6, received / inProcess);
  std::printf("live: resident memory %ld KiB at most, %ld KiB at the end", residentMost, ResidentKiB());
  if (residentAtMinute > 0)
    std::printf("; %ld KiB at one minute, %ld KiB at most after it (x%.3f)", residentAtMinute, residentAfterMinuteMost,
                static_cast<double>(residentAfterMinuteMost) / static_cast<double>(residentAtMinute));
  std::printf("\n");
  return 0;
}

int Publish(const std::string& endpoint, int channels, double rate, double seconds) {
  quillon::LivePublisher publisher(1000, 0);
  if (!publisher.attach({quillon::LiveAttach::kConnect, endpoint}).empty()) return 1;
  if (!publisher.waitForSubscribers({"Bench[1]"}, 1, 10s)) return 1;
  const auto start = Clock::now();
  const auto end = start + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
  std::vector<std::vector<unsigned char>> messages = Round(channels);
  long step = 0;
  while (Clock::now() < end) {
    if (rate > 0)
      std::this_thread::sleep_until(start + std::chrono::duration_cast<Clock::duration>(
                                                std::chrono::duration<double>(static_cast<double>(step) / rate)));
    std::vector<unsigned char>& m = messages[static_cast<std::size_t>(step) % messages.size()];
    Restamp(m, NowMicros());
    publisher.send("Bench[1]", m.data(), m.size());
    ++step;
  }
  const double elapsed = std::chrono::duration<double>(Clock::now() - start).count();
  std::printf("publish: sent %ld messages of %d channels in %.0f s, %.0f messages/s\n", step, channels, elapsed,
              static_cast<double>(step) / elapsed);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string mode = argc > 1 ? argv[1] : "";
  if (mode == "view" && (argc == 4 || argc == 5)) {
    const int channels = std::atoi(argv[2]);
    if (channels >= 2 && channels <= 65535)
      return View(channels, std::atof(argv[3]), argc == 5 ? std::atof(argv[4]) : 30.0);
  }
  if (mode == "publish" && argc == 6) {
    const int channels = std::atoi(argv[3]);
    if (channels >= 2 && channels <= 65535) return Publish(argv[2], channels, std::atof(argv[4]), std::atof(argv[5]));
  }
  std::fprintf(stderr,
               "usage: live_bench view CHANNELS SECONDS [FPS]\n"
               "       live_bench publish ENDPOINT CHANNELS RATE SECONDS\n");
  return 2;
}
