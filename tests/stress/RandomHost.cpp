// The random host: a host that calls every function of the C interface in random order, with
// random, edge and real input, each call checked against what the interface promises of its
// result. A seed makes the same calls again; a report names where it died, should the library
// take it down.
//   random_host --seed S [--seconds T | --calls N] [--x11] [--log]
// With --x11 and a display it also embeds viewers into X11 windows of its own, and destroys
// those windows under them. It ends with 0 when the library survived and kept its word, with 1
// when a result broke a promise of the interface or OpenGL reported an error, and with the
// signal of a crash; either way it names the seed and the call, which --calls replays up to.
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "HostInputs.h"
#include "quillon/quillon.h"

#ifdef QUILLON_STRESS_X11
#include <xcb/xcb.h>
#endif

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#define QUILLON_STRESS_SANITIZED 1
#endif

namespace quillon::stress {

/// Windows made with plain xcb, as a host that knows nothing of Qt makes them; none where
/// the build has no xcb or there is no display.
class HostWindows {
 public:
#ifdef QUILLON_STRESS_X11
  explicit HostWindows(bool wanted) {
    if (!wanted || !std::getenv("DISPLAY")) return;
    connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection)) {
      xcb_disconnect(connection);
      connection = nullptr;
      return;
    }
    screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
  }
  ~HostWindows() {
    if (!connection) return;
    for (std::uint32_t w : windows) xcb_destroy_window(connection, w);
    xcb_disconnect(connection);
  }
  bool available() const { return connection != nullptr; }
  unsigned long Make(int width, int height) {
    if (!connection) return 0;
    const std::uint32_t id = xcb_generate_id(connection);
    const std::uint32_t background = screen->black_pixel;
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, id, screen->root, 0, 0, static_cast<std::uint16_t>(width),
                      static_cast<std::uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                      XCB_CW_BACK_PIXEL, &background);
    xcb_map_window(connection, id);
    Sync();
    windows.push_back(id);
    return id;
  }
  void Destroy(std::size_t at) {
    xcb_destroy_window(connection, windows[at]);
    Sync();
    windows.erase(windows.begin() + static_cast<std::ptrdiff_t>(at));
  }
#else
  explicit HostWindows(bool) {}
  bool available() const { return false; }
  unsigned long Make(int, int) { return 0; }
  void Destroy(std::size_t) {}
#endif
  std::size_t count() const { return windows.size(); }
  unsigned long At(std::size_t i) const { return windows[i]; }

 private:
#ifdef QUILLON_STRESS_X11
  // A round trip, so that the server has done what was asked before the library asks it.
  void Sync() { std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr)); }
  xcb_connection_t* connection = nullptr;
  xcb_screen_t* screen = nullptr;
#endif
  std::vector<std::uint32_t> windows;
};

/// The action of the call under way, for a crash report.
inline const char* currentAction = "start";

/// What the host did, and the first thing that went wrong.
struct Stats {
  std::uint64_t calls = 0, controls = 0, documents = 0, loaded = 0, messages = 0, frames = 0, drawn = 0;
  std::uint64_t offscreenAsked = 0, offscreenMade = 0, embeddedAsked = 0, embeddedMade = 0;
  std::uint64_t glErrors = 0;
  std::string firstGlError;
  std::string broken;            // the first promise of the interface that a result broke
  QuillonCtrl* asked = nullptr;  // a live control that the trace callback may ask
  bool log = false;              // every call's arguments and every trace line to standard error
};

/// A trace callback that counts the library's OpenGL error lines into the Stats at `user`.
void OnTrace(const char* line, void* user) {
  auto* stats = static_cast<Stats*>(user);
  if (!stats || !line) return;
  if (stats->log) std::fprintf(stderr, "  trace: %s\n", line);
  if (std::strncmp(line, "OpenGL error", 12) != 0) return;
  if (stats->glErrors++ == 0) stats->firstGlError = line;
}

namespace {

// A host that asks the library a question from inside its trace callback, which may come in
// the middle of a load or a frame.
void OnTraceAsking(const char* line, void* user) {
  auto* stats = static_cast<Stats*>(user);
  if (quillon_SupportsVersion(stats->asked, 2) != (stats->asked ? 1 : 0) ||
      quillon_GetMinimalWindowWidth_v1(nullptr) != 0)
    stats->broken = "a question from the trace callback";
  quillon_free(quillon_error_text(stats->asked));
  OnTrace(line, user);
}

// An in/out string of the interface: null, a pointer to null, or a text. What the library
// writes into it is freed when the argument goes.
class HostString {
 public:
  HostString(InputMaker& in, std::string value) : text(std::move(value)) {
    const int form = in.Pick(0, 19);
    if (form == 0)
      pointer = nullptr;
    else if (form == 1)
      slot = nullptr;
    else
      slot = text.data();
    original = slot;
  }
  ~HostString() {
    if (pointer && slot != original) quillon_free(slot);
  }
  HostString(const HostString&) = delete;
  HostString& operator=(const HostString&) = delete;
  char** get() { return pointer; }
  bool written() const { return pointer && slot != original; }
  const char* value() const { return slot; }

 private:
  std::string text;
  char* slot = nullptr;
  char* original = nullptr;
  char** pointer = &slot;
};

}  // namespace

class RandomHost {
 public:
  /// With x11, viewers are embedded into X11 windows of the host's own too, where it can.
  RandomHost(std::uint64_t seed, const RealInputs& real, bool x11) : random(seed), in(random, real), hostWindows(x11) {}
  ~RandomHost() {
    for (Control& c : controls) {
      quillon_destroy_window(c.ctrl);
      quillon_destroy(c.ctrl);
    }
    quillon_set_trace_callback(nullptr, nullptr);
  }
  RandomHost(const RandomHost&) = delete;
  RandomHost& operator=(const RandomHost&) = delete;

  /// One call, of a kind drawn by weight.
  void Step() {
    int total = 0;
    for (const Choice& c : Choices()) total += c.weight;
    int pick = in.Pick(0, total - 1);
    for (const Choice& c : Choices()) {
      if ((pick -= c.weight) >= 0) continue;
      currentAction = c.name;
      (this->*c.action)();
      break;
    }
    ++stats.calls;
  }
  Stats stats;

 private:
  using Action = void (RandomHost::*)();
  struct Choice {
    int weight;
    const char* name;
    Action action;
  };
  struct Control {
    QuillonCtrl* ctrl = nullptr;
    Document loaded;  // the last document that loaded, for messages and names
  };

  Control& Live() {
    if (controls.empty()) Create();
    return controls[static_cast<std::size_t>(in.Pick(0, static_cast<int>(controls.size()) - 1))];
  }
  QuillonCtrl* AnyCtrl() { return in.Chance(3) ? nullptr : Live().ctrl; }
  void Broken(const std::string& what) {
    if (stats.broken.empty()) stats.broken = what;
  }

  void Create() {
    if (controls.size() >= 4) return;
    QuillonCtrl* ctrl = quillon_create();
    if (!ctrl) return Broken("quillon_create gave no control");
    controls.push_back({ctrl, {}});
    stats.asked = controls.front().ctrl;
    ++stats.controls;
  }
  void Destroy() {
    if (controls.empty()) return;
    const auto at = static_cast<std::size_t>(in.Pick(0, static_cast<int>(controls.size()) - 1));
    // The header asks for the window to go first; a careless host forgets.
    if (in.Chance(70)) quillon_destroy_window(controls[at].ctrl);
    quillon_destroy(controls[at].ctrl);
    controls.erase(controls.begin() + static_cast<std::ptrdiff_t>(at));
    stats.asked = controls.empty() ? nullptr : controls.front().ctrl;
  }
  void CreateWindow() {
    unsigned long parent =
        in.Chance(92) ? 0UL : in.OneOf(std::vector<unsigned long>{1UL << 40, ~0UL, 0xdeadbeefUL, 0x7ffffff0UL});
    const int w = in.WindowSize(), h = in.WindowSize();
    if (hostWindows.available() && in.Chance(25)) {
      parent = hostWindows.count() > 0 && in.Chance(50)
                   ? hostWindows.At(static_cast<std::size_t>(in.Pick(0, static_cast<int>(hostWindows.count()) - 1)))
                   : hostWindows.Make(in.Pick(1, 800), in.Pick(1, 600));
    }
    if (stats.log) std::fprintf(stderr, "  parent %lu, %d x %d\n", parent, w, h);
    const bool sensible = w > 0 && h > 0 && w <= 16384 && h <= 16384;
    const bool hostWindow = parent != 0 && parent <= 0xffffffffUL && parent != 0xdeadbeefUL && parent != 0x7ffffff0UL;
    if (sensible) ++(hostWindow ? stats.embeddedAsked : stats.offscreenAsked);
    if (quillon_create_window(AnyCtrl(), parent, w, h) == 0) {
      areaWidth = w;
      areaHeight = h;
      if (sensible) ++(hostWindow ? stats.embeddedMade : stats.offscreenMade);
    }
  }
  void Resize() {
    const int w = in.WindowSize(), h = in.WindowSize();
    if (stats.log) std::fprintf(stderr, "  %d x %d\n", w, h);
    quillon_resize(AnyCtrl(), w, h);
    if (w > 0 && h > 0 && w <= 16384 && h <= 16384 && areaWidth > 0) {
      areaWidth = w;
      areaHeight = h;
    }
  }
  void DestroyWindow() { quillon_destroy_window(AnyCtrl()); }
  void Render() {
    std::size_t size =
        static_cast<std::size_t>(std::max(areaWidth, 0)) * static_cast<std::size_t>(std::max(areaHeight, 0)) * 4;
    const int change = in.Pick(0, 9);
    if (change == 0) size = size > 0 ? size - 1 : 0;
    if (change == 1) size = static_cast<std::size_t>(in.Pick(0, 64));
    if (change == 2) size += static_cast<std::size_t>(in.Pick(1, 4096));
    // The buffer is exactly as large as the host says, so that a write past it shows.
    std::vector<unsigned char> pixels(size);
    unsigned char* data = in.Chance(3) ? nullptr : pixels.data();
    ++stats.frames;
    if (quillon_render_rgba(AnyCtrl(), data, size) == 0) ++stats.drawn;
  }
  void ErrorText() {
    QuillonCtrl* ctrl = AnyCtrl();
    char* text = quillon_error_text(ctrl);
    if (ctrl && !text) Broken("quillon_error_text gave no text");
    quillon_free(text);
  }
  void Version() {
    const long v =
        in.Chance(70) ? in.Pick(-1, 5) : in.OneOf(std::vector<long>{LONG_MIN, LONG_MAX, 1L << 32, 2 + (1L << 32)});
    QuillonCtrl* ctrl = AnyCtrl();
    const int expected = ctrl && v >= 1 && v <= 3 ? 1 : 0;
    if (quillon_SupportsVersion(ctrl, v) != expected) Broken("SupportsVersion(" + std::to_string(v) + ")");
  }
  void Background() {
    quillon_SetBackgroundColour_v1(AnyCtrl(), in.AnyFloat(), in.AnyFloat(), in.AnyFloat(), in.AnyFloat(), in.AnyFloat(),
                                   in.AnyFloat());
  }
  void Send() {
    Control& c = Live();
    QuillonCtrl* ctrl = in.Chance(2) ? nullptr : c.ctrl;
    const std::vector<unsigned char> message = in.AnyMessage(c.loaded, last);
    const unsigned char* bytes = message.data();
    long count = static_cast<long>(message.size());
    bool badCount = false;
    const int form = in.Pick(0, 39);
    if (form == 0) {  // not a byte array: the buffer grows to the count and its old content is read again
      bytes = nullptr;
      count = in.Chance(95) ? in.Pick(0, 5000) : QUILLON_MAX_MESSAGE_BYTES;
    } else if (form == 1) {
      count = in.OneOf(std::vector<long>{-1, LONG_MIN, QUILLON_MAX_MESSAGE_BYTES + 1, LONG_MAX});
      badCount = true;
    } else if (form == 2) {
      count = 0;
    }
    if (message.empty() && bytes && count > 0) bytes = nullptr;
    ++stats.messages;
    QuillonBytes result = quillon_SendChannels_v1(ctrl, bytes, count);
    if ((result.data == nullptr) != (result.size == 0))
      Broken("SendChannels_v1 gave bytes without a size or a size without bytes");
    const std::string_view text(reinterpret_cast<const char*>(result.data), result.size);
    if (!text.empty() && text.find("1290302") == std::string_view::npos)
      Broken("a SendChannels_v1 error text without the closing entry 1290302");
    if (ctrl && badCount && text.find("1290304") == std::string_view::npos)
      Broken("SendChannels_v1 took the count " + std::to_string(count));
    quillon_free(result.data);
  }
  void Initialize() {
    Control& c = Live();
    Document d = in.AnyDocument();
    ++stats.documents;
    HostString xml(in, d.xml), annotated(in, "previous"), groups(in, "");
    QuillonBytes result =
        quillon_InitializeViewer_v1(in.Chance(2) ? nullptr : c.ctrl, xml.get(), annotated.get(), groups.get());
    if (result.data || result.size) Broken("InitializeViewer_v1 gave a text");
    quillon_free(result.data);
    if (xml.written()) Broken("InitializeViewer_v1 wrote into the document argument");
    // A document that loads leaves the annotated text empty.
    if (annotated.written() && annotated.value() && !*annotated.value()) {
      c.loaded = d;
      ++stats.loaded;
    }
    last = std::move(d);
  }
  void LoadDocument() {
    Control& c = Live();
    Document d = in.Chance(30) ? in.GoodDocument() : in.AnyDocument();
    ++stats.documents;
    const bool nullCtrl = in.Chance(2);
    char* annotated = nullptr;
    char* groups = nullptr;
    const int result = quillon_load_document(nullCtrl ? nullptr : c.ctrl, in.Chance(3) ? nullptr : d.xml.c_str(),
                                             in.Chance(10) ? nullptr : &annotated, in.Chance(10) ? nullptr : &groups);
    if (nullCtrl && (result != 1290303 || annotated || groups)) Broken("load_document on a null control");
    quillon_free(annotated);
    quillon_free(groups);
    if (result == 0 && !nullCtrl) {
      c.loaded = d;
      ++stats.loaded;
    }
    last = std::move(d);
  }
  void Foreground() {
    if (in.Chance(60))
      quillon_SetForegroundColour_v1(AnyCtrl(), in.AnyDouble(), in.AnyDouble(), in.AnyDouble());
    else
      quillon_RemoveForegroundColour_v1(AnyCtrl());
  }
  void Switches() {
    QuillonCtrl* ctrl = AnyCtrl();
    const int which = in.Pick(0, 5);
    if (which == 0) quillon_EnableContextMenu_v1(ctrl);
    if (which == 1) quillon_DisableContextMenu_v1(ctrl);
    if (which == 2) quillon_EnableNavigationControls_v1(ctrl);
    if (which == 3) quillon_DisableNavigationControls_v1(ctrl);
    if (which == 4) quillon_EnableMouseNavigation_v2(ctrl);
    if (which == 5) quillon_DisableMouseNavigation_v2(ctrl);
  }
  void GetCamera() {
    QuillonCtrl* ctrl = AnyCtrl();
    HostString t0(in, "a"), t1(in, "b"), t2(in, ""), t3(in, "d"), t4(in, "e"), t5(in, "f");
    const int ok = quillon_GetCameraPosition_v1(ctrl, t0.get(), t1.get(), t2.get(), t3.get(), t4.get(), t5.get());
    if (!ctrl && ok) Broken("GetCameraPosition_v1 on a null control");
  }
  void SetCamera() {
    QuillonCtrl* ctrl = AnyCtrl();
    HostString t0(in, in.CameraText(0)), t1(in, in.CameraText(1)), t2(in, in.CameraText(2)), t3(in, in.CameraText(3)),
        t4(in, in.CameraText(4)), t5(in, in.CameraText(5));
    quillon_SetCameraPosition_v1(ctrl, t0.get(), t1.get(), t2.get(), t3.get(), t4.get(), t5.get());
  }
  void MinimalSize() {
    QuillonCtrl* ctrl = AnyCtrl();
    const long w = quillon_GetMinimalWindowWidth_v1(ctrl), h = quillon_GetMinimalWindowHeight_v1(ctrl);
    if (w != (ctrl ? 463 : 0) || h != (ctrl ? 480 : 0)) Broken("the minimal window size");
  }
  void Hide() {
    Control& c = Live();
    HostString name(in, in.NodeName(c.loaded));
    QuillonCtrl* ctrl = in.Chance(3) ? nullptr : c.ctrl;
    const int found = in.Chance(50) ? quillon_HideNode_v1(ctrl, name.get()) : quillon_UnhideNode_v1(ctrl, name.get());
    if (found && (!ctrl || !name.value() || !*name.value())) Broken("a node without a name was found");
  }
  void ViewAll() { quillon_ViewAll_v2(AnyCtrl()); }
  void Thresholds() {
    if (in.Chance(50))
      quillon_SetNominalThreshold(AnyCtrl(), in.Chance(50) ? in.AnyFloat() * 100.0f : in.AnyFloat());
    else
      quillon_SetMeaningfulThreshold(AnyCtrl(), in.Chance(50) ? in.AnyFloat() * 100.0f : in.AnyFloat());
  }
  void Mode() { quillon_SetViewportManipulationMode(AnyCtrl(), static_cast<unsigned char>(in.Pick(0, 255))); }
  void Free() {
    quillon_free(nullptr);
    quillon_free(quillon_error_text(AnyCtrl()));
  }
  void TraceCallback() {
    const int form = in.Pick(0, 3);
    if (form == 0)  // the default again: a GL error still reaches standard error
      quillon_set_trace_callback(nullptr, in.Chance(50) ? &stats : nullptr);
    else
      quillon_set_trace_callback(form == 1 ? OnTraceAsking : OnTrace, &stats);
  }
  void ProcessEvents() { quillon_process_events(AnyCtrl()); }
  void NullControl() {
    char* annotated = nullptr;
    unsigned char pixels[16];
    if (quillon_create_window(nullptr, 0, 10, 10) == 0 || quillon_render_rgba(nullptr, pixels, sizeof pixels) == 0 ||
        quillon_error_text(nullptr) || quillon_SendChannels_v1(nullptr, pixels, 16).data ||
        quillon_load_document(nullptr, "<Visualisation/>", &annotated, nullptr) != 1290303 || annotated)
      Broken("a null control gave a result that is not neutral");
    quillon_resize(nullptr, 10, 10);
    quillon_destroy_window(nullptr);
    quillon_destroy(nullptr);
    quillon_process_events(nullptr);
  }
  // A host may take its window away while a viewer lives in it, or make one for later.
  void HostWindow() {
    if (!hostWindows.available()) return;
    if (hostWindows.count() > 0 && in.Chance(50))
      hostWindows.Destroy(static_cast<std::size_t>(in.Pick(0, static_cast<int>(hostWindows.count()) - 1)));
    else if (hostWindows.count() < 8)
      hostWindows.Make(in.Pick(1, 800), in.Pick(1, 600));
  }

  static const std::vector<Choice>& Choices() {
    static const std::vector<Choice> choices = {
        {2, "create", &RandomHost::Create},
        {1, "destroy", &RandomHost::Destroy},
        {3, "create_window", &RandomHost::CreateWindow},
        {2, "resize", &RandomHost::Resize},
        {1, "destroy_window", &RandomHost::DestroyWindow},
        {10, "render_rgba", &RandomHost::Render},
        {2, "error_text", &RandomHost::ErrorText},
        {1, "SupportsVersion", &RandomHost::Version},
        {1, "SetBackgroundColour_v1", &RandomHost::Background},
        {25, "SendChannels_v1", &RandomHost::Send},
        {3, "InitializeViewer_v1", &RandomHost::Initialize},
        {4, "load_document", &RandomHost::LoadDocument},
        {2, "SetForegroundColour_v1", &RandomHost::Foreground},
        {2, "Enable/Disable", &RandomHost::Switches},
        {2, "GetCameraPosition_v1", &RandomHost::GetCamera},
        {3, "SetCameraPosition_v1", &RandomHost::SetCamera},
        {1, "GetMinimalWindowSize_v1", &RandomHost::MinimalSize},
        {3, "HideNode_v1", &RandomHost::Hide},
        {2, "ViewAll_v2", &RandomHost::ViewAll},
        {2, "SetThreshold", &RandomHost::Thresholds},
        {1, "SetViewportManipulationMode", &RandomHost::Mode},
        {1, "free", &RandomHost::Free},
        {1, "set_trace_callback", &RandomHost::TraceCallback},
        {1, "process_events", &RandomHost::ProcessEvents},
        {1, "null control", &RandomHost::NullControl},
        {1, "host window", &RandomHost::HostWindow},
    };
    return choices;
  }

  Random random;
  InputMaker in;
  HostWindows hostWindows;
  std::vector<Control> controls;
  Document last;  // the last document sent to any control, for messages that fit another one
  // What the host believes of the window that the viewers draw into.
  int areaWidth = 0, areaHeight = 0;
};

}  // namespace quillon::stress

namespace {

using namespace quillon::stress;

// What a crash report names. Written from a signal handler, so only plain values.
std::uint64_t reportSeed = 0;
std::uint64_t reportCall = 0;
bool reportX11 = false;

void WriteNumber(std::uint64_t n) {
  char digits[24];
  int i = 0;
  do {
    digits[i++] = static_cast<char>('0' + n % 10);
    n /= 10;
  } while (n && i < 24);
  while (i > 0) {
    const char c = digits[--i];
    if (write(STDERR_FILENO, &c, 1) < 0) return;
  }
}

void WriteText(const char* text) {
  if (write(STDERR_FILENO, text, std::strlen(text)) < 0) return;
}

void ReportWhereWeWere() {
  WriteText(currentAction ? "random host: died in call " : "random host: died at exit (the leak check) after call ");
  WriteNumber(reportCall);
  if (currentAction) {
    WriteText(" (");
    WriteText(currentAction);
    WriteText(")");
  }
  WriteText(" of seed ");
  WriteNumber(reportSeed);
  WriteText("; replay with: random_host --seed ");
  WriteNumber(reportSeed);
  WriteText(" --calls ");
  WriteNumber(reportCall);
  WriteText(reportX11 ? " --x11\n" : "\n");
}

#ifdef QUILLON_STRESS_SANITIZED
// The sanitizers keep their own signal handlers; they call this before they end the process.
void InstallCrashReport() { __sanitizer_set_death_callback(ReportWhereWeWere); }
#else
void OnFatalSignal(int signal) {
  ReportWhereWeWere();
  ::signal(signal, SIG_DFL);
  raise(signal);
}

void InstallCrashReport() {
  for (int s : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) signal(s, OnFatalSignal);
}
#endif

struct Options {
  std::uint64_t seed = 1;
  double seconds = -1;
  std::uint64_t calls = 0;
  bool log = false;
  bool x11 = false;
};

bool Parse(int argc, char** argv, Options& options) {
  for (int i = 1; i < argc; ++i) {
    const std::string_view arg(argv[i]);
    const char* value = i + 1 < argc ? argv[i + 1] : nullptr;
    if (arg == "--log" || arg == "--x11") {
      (arg == "--log" ? options.log : options.x11) = true;
    } else if ((arg == "--seed" || arg == "--calls") && value) {
      (arg == "--seed" ? options.seed : options.calls) = std::strtoull(argv[++i], nullptr, 10);
    } else if (arg == "--seconds" && value) {
      options.seconds = std::strtod(argv[++i], nullptr);
    } else {
      return false;
    }
  }
  if (options.seconds < 0) options.seconds = options.calls ? 1e9 : 30;
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  if (!Parse(argc, argv, options)) {
    std::fprintf(stderr, "usage: random_host [--seed S] [--seconds T] [--calls N] [--x11] [--log]\n");
    return 2;
  }
  reportSeed = options.seed;
  reportX11 = options.x11;
  InstallCrashReport();
  const RealInputs real = RealInputs::Load(QUILLON_SOURCE_DIR);
  const auto start = std::chrono::steady_clock::now();
  const auto end = start + std::chrono::duration<double>(options.seconds);
  int status = 0;
  {
    RandomHost host(options.seed, real, options.x11);
    host.stats.log = options.log;
    quillon_set_trace_callback(OnTrace, &host.stats);
    while ((!options.calls || host.stats.calls < options.calls) && std::chrono::steady_clock::now() < end) {
      reportCall = host.stats.calls + 1;
      host.Step();
      if (options.log) std::fprintf(stderr, "%llu %s\n", static_cast<unsigned long long>(reportCall), currentAction);
      if (!host.stats.broken.empty() || host.stats.glErrors > 0) {
        std::fprintf(stderr, "random host: %s\n",
                     host.stats.broken.empty() ? host.stats.firstGlError.c_str() : host.stats.broken.c_str());
        ReportWhereWeWere();
        std::fflush(stderr);
        status = 1;
        break;
      }
    }
    currentAction = nullptr;
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const Stats& s = host.stats;
    const auto n = [](std::uint64_t v) { return static_cast<unsigned long long>(v); };
    std::printf(
        "random host: seed %llu: %llu calls in %.1f s; %llu controls, %llu documents (%llu loaded), %llu messages, "
        "%llu frames (%llu drawn); windows: %llu of %llu offscreen, %llu of %llu embedded\n",
        n(options.seed), n(s.calls), seconds, n(s.controls), n(s.documents), n(s.loaded), n(s.messages), n(s.frames),
        n(s.drawn), n(s.offscreenMade), n(s.offscreenAsked), n(s.embeddedMade), n(s.embeddedAsked));
  }
  return status;
}
