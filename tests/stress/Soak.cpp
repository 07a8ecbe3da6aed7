// Long runs of an offscreen viewer over the C interface, watching memory, errors and speed:
//   quillon_soak channels [--seconds S] [--sample S] [--warmup S]
//       1,000 channels in messages at 1 kHz, a frame every 16 ms;
//   quillon_soak reloads [--count N] [--seconds S] [--sample S] [--warmup S]
//       document after document, each with a few messages and a frame.
// It samples the resident memory every --sample seconds and ends with 1 when the memory grew
// by more than 2 MB after the warm-up, when an error came that the input does not explain, or
// when the work of the last sample took more than twice as long as after the warm-up.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "channels/MessageBuilder.h"
#include "quillon/quillon.h"

namespace {

using quillon::test::MessageBuilder;
using Clock = std::chrono::steady_clock;

const char* const kMaterialFields[] = {"transparency", "emissiveColor", "shininess"};

std::string Box(int t, double x, double y) {
  const std::string n = std::to_string(t);
  return "DEF T" + n + " Transform { translation " + std::to_string(x) + " " + std::to_string(y) +
         " 0 children [ Shape { appearance Appearance { material DEF M" + n +
         " Material { diffuseColor 0.8 0.8 0.8 } } geometry Box { size 0.02 0.02 0.02 } } ] } ";
}

double GridX(int i) { return (i % 20) * 0.05; }
double GridY(int i) { return (i / 20) * 0.05; }

// Switches, each choosing between two transforms with a box; of each switch's five channels
// two move or turn its transforms (3D, 6D), two colour their materials and one switches.
// 200 switches make 1,000 channels.
struct SoakDocument {
  explicit SoakDocument(int count = 200) : switches(count) {
    std::string scene = "#VRML V2.0 utf8\n";
    std::string routes;
    for (int i = 0; i < switches; ++i) {
      const int a = 2 * i, b = 2 * i + 1;
      scene += "DEF S" + std::to_string(i) + " Switch { whichChoice 0 choice [ " + Box(a, GridX(i), GridY(i)) +
               Box(b, GridX(i), GridY(i)) + "] }\n";
      auto from = [&](int slot, const char* kind) {
        return "Soak[1][" + std::to_string(5 * i + slot) + "][" + kind + "]";
      };
      routes += "  <ExternRoute from=\"" + from(0, "3D") + "\" to=\"T" + std::to_string(a) + ".translation\"/>\n";
      routes += "  <ExternRoute from=\"" + from(1, "6D") + "\" to=\"T" + std::to_string(b) + ".rotation\"/>\n";
      routes += "  <ExternRoute from=\"" + from(2, "1D") + "\" to=\"M" + std::to_string(a) + ".diffuseColor\"/>\n";
      routes += "  <ExternRoute from=\"" + from(3, "1D") + "\" to=\"M" + std::to_string(b) + "." +
                kMaterialFields[i % 3] + "\"/>\n";
      routes += "  <ExternRoute from=\"" + from(4, "1D") + "\" to=\"S" + std::to_string(i) + "\"/>\n";
    }
    xml =
        "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<Visualisation>\n  <Label>Soak</Label>\n"
        "  <Version>1.0</Version>\n  <Settings><RenderInvalids>freeze</RenderInvalids></Settings>\n"
        "  <Scene format=\"VRML97\"><![CDATA[" +
        scene + "]]></Scene>\n" + routes + "</Visualisation>\n";
  }
  int channels() const { return 5 * switches; }
  // The message at step n: every channel, with quality; now and then a value between the
  // thresholds or beyond them, so that every colour and the freeze and hide paths are taken.
  const std::vector<unsigned char>& Message(std::uint64_t n) {
    MessageBuilder m;
    m.bytes.reserve(bytes.capacity());
    m.Header(0x001D, "Soak", 1, static_cast<std::uint16_t>(channels()));
    const double t = static_cast<double>(n) * 0.001;
    const auto stamp = static_cast<std::uint32_t>(n);
    // One block in 97 reports a quality between the thresholds, beyond them, or none at all.
    const int odd = static_cast<int>(n % 97);
    for (int i = 0; i < switches; ++i) {
      double quality = 0.0;
      if (i == odd) {
        const double odds[] = {50.0, 1000.0, std::numeric_limits<double>::quiet_NaN()};
        quality = odds[n % 3];
      }
      const double wave = std::sin(t + i);
      m.U8(2).F64(GridX(i) + 0.01 * wave).F64(GridY(i)).F64(0.01 * wave).F64(quality).U32(0).U32(stamp);
      const double c = std::cos(t + i), s = std::sin(t + i);
      m.U8(3).F64(GridX(i)).F64(GridY(i)).F64(0.0);
      for (double r : {c, s, 0.0, -s, c, 0.0, 0.0, 0.0, 1.0}) m.F64(r);
      m.F64(quality).U32(0).U32(stamp);
      m.U8(1).F64(0.5 + 0.5 * wave).F64(quality).U32(0).U32(stamp);
      m.U8(1).F64(0.25 + 0.25 * wave).F64(quality).U32(0).U32(stamp);
      m.U8(1).F64(wave > 0 ? 1.0 : 0.0).F64(quality).U32(0).U32(stamp);
    }
    bytes = std::move(m.bytes);
    return bytes;
  }

  int switches;
  std::string xml;
  std::vector<unsigned char> bytes;
};

// A message of one group with a value of each kind in `kinds` ("1D 3D 6D", each two letters and a
// blank), all nominal.
std::vector<unsigned char> PlainMessage(const std::string& name, std::int32_t group, const std::string& kinds,
                                        std::uint64_t n) {
  MessageBuilder m;
  m.Header(0x001D, name, group, static_cast<std::uint16_t>((kinds.size() + 1) / 3));
  const double wave = std::sin(static_cast<double>(n) * 0.01);
  for (std::size_t at = 0; at < kinds.size(); at += 3) {
    if (kinds[at] == '3') {
      m.U8(2).F64(0.05 * wave).F64(0.0).F64(0.0);
    } else if (kinds[at] == '6') {
      m.U8(3).F64(0.0).F64(0.0).F64(0.0);
      for (double r : {std::cos(wave), std::sin(wave), 0.0, -std::sin(wave), std::cos(wave), 0.0, 0.0, 0.0, 1.0})
        m.F64(r);
    } else {
      m.U8(1).F64(0.5 + 0.5 * wave);
    }
    m.F64(0.0).U32(0).U32(static_cast<std::uint32_t>(n));
  }
  return std::move(m.bytes);
}

// The resident memory of this process in bytes, or 0 where it cannot be read.
std::size_t ResidentBytes() {
  std::FILE* f = std::fopen("/proc/self/statm", "r");
  if (!f) return 0;
  unsigned long size = 0, resident = 0;
  const int read = std::fscanf(f, "%lu %lu", &size, &resident);
  std::fclose(f);
  return read == 2 ? resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) : 0;
}

constexpr int kWidth = 463, kHeight = 480;
constexpr double kDriftBar = 2.0 * 1024 * 1024;

double Mb(double bytes) { return bytes / (1024.0 * 1024.0); }

double Median(std::vector<double> v) {
  if (v.empty()) return 0;
  std::nth_element(v.begin(), v.begin() + static_cast<std::ptrdiff_t>(v.size() / 2), v.end());
  return v[v.size() / 2];
}

struct Options {
  std::string mode;
  double seconds = 0;
  double count = 0;
  double sample = 60;
  double warmup = 60;
};

// One row for each sample: memory, and the median time of each kind of work since the last.
struct Sample {
  double at = 0;
  std::size_t rss = 0;
  long work = 0;
  double workMedian = 0;   // microseconds per message, or per reload
  double frameMedian = 0;  // milliseconds per frame
};

class Soak {
 public:
  explicit Soak(const Options& o) : options(o) {
    ctrl = quillon_create();
    quillon_set_trace_callback(&Soak::OnTrace, this);
    if (!ctrl || quillon_create_window(ctrl, 0, kWidth, kHeight) != 0) {
      std::fprintf(stderr, "soak: no offscreen viewer here\n");
      std::exit(77);
    }
    pixels.resize(static_cast<std::size_t>(kWidth) * kHeight * 4);
  }
  ~Soak() {
    quillon_set_trace_callback(nullptr, nullptr);
    quillon_destroy_window(ctrl);
    quillon_destroy(ctrl);
  }
  Soak(const Soak&) = delete;
  Soak& operator=(const Soak&) = delete;

  int RunChannels() {
    SoakDocument document;
    if (!Load(document.xml)) return Verdict("message us");
    quillon_ViewAll_v2(ctrl);
    std::printf("soak channels: %d channels at 1 kHz, a frame every 16 ms, %d x %d\n", document.channels(), kWidth,
                kHeight);
    std::printf("%8s %9s %9s %11s %9s\n", "time_s", "rss_mb", "messages", "message_us", "frame_ms");
    const Clock::duration period = std::chrono::microseconds(1000), framePeriod = std::chrono::milliseconds(16);
    start = Clock::now();
    nextSample = start;
    auto nextMessage = start, nextFrame = start;
    long behind = 0;
    for (std::uint64_t n = 0;; ++n) {
      const auto now = Clock::now();
      if (!Tick(now)) break;
      if (now < nextMessage)
        std::this_thread::sleep_until(nextMessage);
      else if (now - nextMessage > framePeriod)
        ++behind;
      nextMessage += period;
      const std::vector<unsigned char>& message = document.Message(n);
      const auto t = Clock::now();
      Send(message);
      workTimes.push_back(std::chrono::duration<double, std::micro>(Clock::now() - t).count());
      if (Clock::now() >= nextFrame) {
        Frame();
        nextFrame += framePeriod;
        if (Clock::now() > nextFrame) nextFrame = Clock::now();
      }
    }
    if (behind) std::printf("soak channels: %ld messages went out more than a frame late\n", behind);
    return Verdict("message us");
  }

  int RunReloads(const std::string& sourceDir) {
    // The examples that load cleanly, with the group and the channel kinds that their routes
    // take, and a small soak document.
    struct Entry {
      std::string xml, name;
      int group;
      std::string kinds;
    };
    const Entry examples[] = {{"basic.xml", "Probe1", 2, "3D 1D"},
                              {"colour-maps.xml", "Oven", 1, "1D 1D"},
                              {"robot_arm.xml", "Arm", 1, "3D 6D 6D 1D 1D 1D"},
                              {"scene_tour.xml", "Rig", 1, "3D 1D 1D"}};
    std::vector<Entry> entries;
    for (const auto& e : examples) {
      std::ifstream in(std::filesystem::path(sourceDir) / "examples" / e.xml, std::ios::binary);
      std::string xml((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
      if (!xml.empty()) entries.push_back({xml, e.name, e.group, e.kinds});
    }
    SoakDocument small(20);
    entries.push_back({small.xml, "", 0, ""});
    std::printf("soak reloads: %zu documents in turn, each with 3 messages and a frame, %d x %d\n", entries.size(),
                kWidth, kHeight);
    std::printf("%8s %9s %9s %11s %9s\n", "time_s", "rss_mb", "reloads", "reload_ms", "frame_ms");
    start = Clock::now();
    nextSample = start;
    bool timeUp = false;
    for (long i = 0; options.count <= 0 || static_cast<double>(i) < options.count; ++i) {
      if (!Tick(Clock::now())) {
        timeUp = true;
        break;
      }
      const Entry& e = entries[static_cast<std::size_t>(i) % entries.size()];
      const auto t = Clock::now();
      Load(e.xml);
      workTimes.push_back(std::chrono::duration<double, std::milli>(Clock::now() - t).count());
      if (i % 10 == 0) quillon_ViewAll_v2(ctrl);
      for (std::uint64_t n = 0; n < 3; ++n)
        Send(e.name.empty() ? small.Message(static_cast<std::uint64_t>(i) * 3 + n)
                            : PlainMessage(e.name, e.group, e.kinds, static_cast<std::uint64_t>(i) * 3 + n));
      Frame();
    }
    if (!timeUp) {
      // The count ran out between two samples: the last one covers the rest.
      nextSample = Clock::now();
      Tick(nextSample);
    }
    return Verdict("reload ms");
  }

 private:
  static void OnTrace(const char* line, void* user) {
    if (line && std::strncmp(line, "OpenGL error", 12) == 0) static_cast<Soak*>(user)->Error(line);
  }
  void Error(const std::string& what) {
    if (errors++ < 5) std::fprintf(stderr, "soak: %s\n", what.c_str());
  }

  bool Load(const std::string& xml) {
    char* annotated = nullptr;
    char* groups = nullptr;
    const int result = quillon_load_document(ctrl, xml.c_str(), &annotated, &groups);
    quillon_free(annotated);
    quillon_free(groups);
    if (result != 0) Error("a good document was refused with " + std::to_string(result));
    return result == 0;
  }

  void Send(const std::vector<unsigned char>& message) {
    QuillonBytes result = quillon_SendChannels_v1(ctrl, message.data(), static_cast<long>(message.size()));
    if (result.size) Error("a good message gave: " + std::string(reinterpret_cast<char*>(result.data), result.size));
    quillon_free(result.data);
  }

  void Frame() {
    const auto t = Clock::now();
    if (quillon_render_rgba(ctrl, pixels.data(), pixels.size()) != 0) Error("a frame was not drawn");
    frameTimes.push_back(std::chrono::duration<double, std::milli>(Clock::now() - t).count());
  }

  // Ends a sample when its time has come; true while the run goes on.
  bool Tick(Clock::time_point now) {
    if (now < nextSample) return true;
    const Sample s{std::chrono::duration<double>(now - start).count(), ResidentBytes(),
                   static_cast<long>(workTimes.size()), Median(workTimes), Median(frameTimes)};
    workTimes.clear();
    frameTimes.clear();
    std::printf("%8.0f %9.2f %9ld %11.1f %9.2f\n", s.at, Mb(static_cast<double>(s.rss)), s.work, s.workMedian,
                s.frameMedian);
    std::fflush(stdout);
    samples.push_back(s);
    nextSample += std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(options.sample));
    return options.seconds <= 0 || s.at < options.seconds;
  }

  int Verdict(const char* unit) {
    // The reference is the last sample of the warm-up; the first sample after it is the speed's.
    std::size_t base = 0;
    while (base + 1 < samples.size() && samples[base + 1].at <= options.warmup + 0.5) ++base;
    double drift = 0;
    for (std::size_t i = base + 1; i < samples.size(); ++i)
      drift = std::max(drift, static_cast<double>(samples[i].rss) - static_cast<double>(samples[base].rss));
    const bool measured = base + 2 < samples.size();
    // Speed is compared between the first and the last third of the samples after the warm-up, each
    // taken by its median: one sample alone follows whatever else the machine is doing just then.
    const std::size_t after = samples.size() - base - 1, third = std::max<std::size_t>(1, after / 3);
    auto medianOf = [&](std::size_t from, double Sample::*field) {
      std::vector<double> v;
      for (std::size_t i = from; i < from + third && i < samples.size(); ++i) v.push_back(samples[i].*field);
      return Median(v);
    };
    const double firstWork = measured ? medianOf(base + 1, &Sample::workMedian) : 0;
    const double lastWork = measured ? medianOf(samples.size() - third, &Sample::workMedian) : 0;
    const double firstFrame = measured ? medianOf(base + 1, &Sample::frameMedian) : 0;
    const double lastFrame = measured ? medianOf(samples.size() - third, &Sample::frameMedian) : 0;
    const bool slower = measured && (lastWork > 2 * firstWork + 20 || lastFrame > 2 * firstFrame + 2);
    const bool pass = measured && drift <= kDriftBar && errors == 0 && !slower;
    std::printf(
        "soak %s: drift %.2f MB after %.0f s (bar 2 MB); %s %.1f -> %.1f; frame ms %.2f -> %.2f (first and last "
        "third); %ld errors: %s\n",
        options.mode.c_str(), Mb(drift), samples[base].at, unit, firstWork, lastWork, firstFrame, lastFrame, errors,
        pass       ? "PASS"
        : measured ? "FAIL"
                   : "FAIL (too short to measure)");
    return pass ? 0 : 1;
  }

  Options options;
  QuillonCtrl* ctrl = nullptr;
  std::vector<unsigned char> pixels;
  long errors = 0;
  Clock::time_point start = Clock::now(), nextSample = start;
  std::vector<double> workTimes, frameTimes;
  std::vector<Sample> samples;
};

bool Parse(int argc, char** argv, Options& o) {
  if (argc < 2) return false;
  o.mode = argv[1];
  for (int i = 2; i + 1 < argc; i += 2) {
    const std::string_view arg(argv[i]);
    double* field = arg == "--seconds"  ? &o.seconds
                    : arg == "--count"  ? &o.count
                    : arg == "--sample" ? &o.sample
                    : arg == "--warmup" ? &o.warmup
                                        : nullptr;
    if (!field) return false;
    *field = std::strtod(argv[i + 1], nullptr);
  }
  if (o.mode == "channels" && o.seconds <= 0) o.seconds = 30 * 60;
  if (o.mode == "reloads" && o.count <= 0 && o.seconds <= 0) o.count = 10000;
  return (o.mode == "channels" || o.mode == "reloads") && (argc % 2) == 0 && o.sample > 0;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  if (!Parse(argc, argv, options)) {
    std::fprintf(stderr,
                 "usage: quillon_soak channels [--seconds S] [--sample S] [--warmup S]\n"
                 "       quillon_soak reloads [--count N] [--seconds S] [--sample S] [--warmup S]\n");
    return 2;
  }
  Soak soak(options);
  return options.mode == "channels" ? soak.RunChannels() : soak.RunReloads(QUILLON_SOURCE_DIR);
}
