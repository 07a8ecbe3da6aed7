// The random host's calls: each draws its arguments, makes one call of the C interface and
// checks what the interface promises of the result.
#include "RandomHost.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <utility>

namespace quillon::stress {

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

RandomHost::~RandomHost() {
  for (Control& c : controls) {
    quillon_destroy_window(c.ctrl);
    quillon_destroy(c.ctrl);
  }
  quillon_set_trace_callback(nullptr, nullptr);
}

const std::vector<RandomHost::Choice>& RandomHost::Choices() {
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

void RandomHost::Step() {
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

RandomHost::Control& RandomHost::Live() {
  if (controls.empty()) Create();
  return controls[static_cast<std::size_t>(in.Pick(0, static_cast<int>(controls.size()) - 1))];
}

void RandomHost::Create() {
  if (controls.size() >= 4) return;
  QuillonCtrl* ctrl = quillon_create();
  if (!ctrl) return Broken("quillon_create gave no control");
  controls.push_back({ctrl, {}});
  stats.asked = controls.front().ctrl;
  ++stats.controls;
}

void RandomHost::Destroy() {
  if (controls.empty()) return;
  const auto at = static_cast<std::size_t>(in.Pick(0, static_cast<int>(controls.size()) - 1));
  // The header asks for the window to go first; a careless host forgets.
  if (in.Chance(70)) quillon_destroy_window(controls[at].ctrl);
  quillon_destroy(controls[at].ctrl);
  controls.erase(controls.begin() + static_cast<std::ptrdiff_t>(at));
  stats.asked = controls.empty() ? nullptr : controls.front().ctrl;
}

void RandomHost::CreateWindow() {
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

void RandomHost::Resize() {
  const int w = in.WindowSize(), h = in.WindowSize();
  if (stats.log) std::fprintf(stderr, "  %d x %d\n", w, h);
  quillon_resize(AnyCtrl(), w, h);
  if (w > 0 && h > 0 && w <= 16384 && h <= 16384 && areaWidth > 0) {
    areaWidth = w;
    areaHeight = h;
  }
}

void RandomHost::DestroyWindow() { quillon_destroy_window(AnyCtrl()); }

void RandomHost::Render() {
  std::size_t size =
      static_cast<std::size_t>(std::max(areaWidth, 0)) * static_cast<std::size_t>(std::max(areaHeight, 0)) * 4;
  switch (in.Pick(0, 9)) {
    case 0:
      size = size > 0 ? size - 1 : 0;
      break;
    case 1:
      size = static_cast<std::size_t>(in.Pick(0, 64));
      break;
    case 2:
      size += static_cast<std::size_t>(in.Pick(1, 4096));
      break;
    default:
      break;
  }
  // The buffer is exactly as large as the host says, so that a write past it shows.
  std::vector<unsigned char> pixels(size);
  unsigned char* data = in.Chance(3) ? nullptr : pixels.data();
  ++stats.frames;
  if (quillon_render_rgba(AnyCtrl(), data, size) == 0) ++stats.drawn;
}

void RandomHost::ErrorText() {
  QuillonCtrl* ctrl = AnyCtrl();
  char* text = quillon_error_text(ctrl);
  if (ctrl && !text) Broken("quillon_error_text gave no text");
  quillon_free(text);
}

void RandomHost::Version() {
  const long v =
      in.Chance(70) ? in.Pick(-1, 5) : in.OneOf(std::vector<long>{LONG_MIN, LONG_MAX, 1L << 32, 2 + (1L << 32)});
  QuillonCtrl* ctrl = AnyCtrl();
  const int expected = ctrl && v >= 1 && v <= 3 ? 1 : 0;
  if (quillon_SupportsVersion(ctrl, v) != expected) Broken("SupportsVersion(" + std::to_string(v) + ")");
}

void RandomHost::Background() {
  quillon_SetBackgroundColour_v1(AnyCtrl(), in.AnyFloat(), in.AnyFloat(), in.AnyFloat(), in.AnyFloat(), in.AnyFloat(),
                                 in.AnyFloat());
}

void RandomHost::Send() {
  Control& c = Live();
  QuillonCtrl* ctrl = in.Chance(2) ? nullptr : c.ctrl;
  const std::vector<unsigned char> message = in.AnyMessage(c.loaded, last);
  const unsigned char* bytes = message.data();
  long count = static_cast<long>(message.size());
  bool badCount = false;
  switch (in.Pick(0, 39)) {
    case 0:  // not a byte array: the buffer grows to the count and its old content is read again
      bytes = nullptr;
      count = in.Chance(95) ? in.Pick(0, 5000) : QUILLON_MAX_MESSAGE_BYTES;
      break;
    case 1:
      count = in.OneOf(std::vector<long>{-1, LONG_MIN, QUILLON_MAX_MESSAGE_BYTES + 1, LONG_MAX});
      badCount = true;
      break;
    case 2:
      count = 0;
      break;
    default:
      break;
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

void RandomHost::Initialize() {
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

void RandomHost::LoadDocument() {
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

void RandomHost::Foreground() {
  if (in.Chance(60))
    quillon_SetForegroundColour_v1(AnyCtrl(), in.AnyDouble(), in.AnyDouble(), in.AnyDouble());
  else
    quillon_RemoveForegroundColour_v1(AnyCtrl());
}

void RandomHost::Switches() {
  QuillonCtrl* ctrl = AnyCtrl();
  switch (in.Pick(0, 5)) {
    case 0:
      return quillon_EnableContextMenu_v1(ctrl);
    case 1:
      return quillon_DisableContextMenu_v1(ctrl);
    case 2:
      return quillon_EnableNavigationControls_v1(ctrl);
    case 3:
      return quillon_DisableNavigationControls_v1(ctrl);
    case 4:
      return quillon_EnableMouseNavigation_v2(ctrl);
    default:
      return quillon_DisableMouseNavigation_v2(ctrl);
  }
}

void RandomHost::GetCamera() {
  QuillonCtrl* ctrl = AnyCtrl();
  HostString t0(in, "a"), t1(in, "b"), t2(in, ""), t3(in, "d"), t4(in, "e"), t5(in, "f");
  const int ok = quillon_GetCameraPosition_v1(ctrl, t0.get(), t1.get(), t2.get(), t3.get(), t4.get(), t5.get());
  if (!ctrl && ok) Broken("GetCameraPosition_v1 on a null control");
}

void RandomHost::SetCamera() {
  QuillonCtrl* ctrl = AnyCtrl();
  HostString t0(in, in.CameraText(0)), t1(in, in.CameraText(1)), t2(in, in.CameraText(2)), t3(in, in.CameraText(3)),
      t4(in, in.CameraText(4)), t5(in, in.CameraText(5));
  quillon_SetCameraPosition_v1(ctrl, t0.get(), t1.get(), t2.get(), t3.get(), t4.get(), t5.get());
}

void RandomHost::MinimalSize() {
  QuillonCtrl* ctrl = AnyCtrl();
  const long w = quillon_GetMinimalWindowWidth_v1(ctrl), h = quillon_GetMinimalWindowHeight_v1(ctrl);
  if (w != (ctrl ? 463 : 0) || h != (ctrl ? 480 : 0)) Broken("the minimal window size");
}

void RandomHost::Hide() {
  Control& c = Live();
  HostString name(in, in.NodeName(c.loaded));
  QuillonCtrl* ctrl = in.Chance(3) ? nullptr : c.ctrl;
  const int found = in.Chance(50) ? quillon_HideNode_v1(ctrl, name.get()) : quillon_UnhideNode_v1(ctrl, name.get());
  if (found && (!ctrl || !name.value() || !*name.value())) Broken("a node without a name was found");
}

void RandomHost::ViewAll() { quillon_ViewAll_v2(AnyCtrl()); }

void RandomHost::Thresholds() {
  if (in.Chance(50))
    quillon_SetNominalThreshold(AnyCtrl(), in.Chance(50) ? in.AnyFloat() * 100.0f : in.AnyFloat());
  else
    quillon_SetMeaningfulThreshold(AnyCtrl(), in.Chance(50) ? in.AnyFloat() * 100.0f : in.AnyFloat());
}

void RandomHost::Mode() { quillon_SetViewportManipulationMode(AnyCtrl(), static_cast<unsigned char>(in.Pick(0, 255))); }

void RandomHost::Free() {
  quillon_free(nullptr);
  quillon_free(quillon_error_text(AnyCtrl()));
}

void RandomHost::TraceCallback() {
  switch (in.Pick(0, 3)) {
    case 0:  // the default again: a GL error still reaches standard error
      return quillon_set_trace_callback(nullptr, in.Chance(50) ? &stats : nullptr);
    case 1:
      return quillon_set_trace_callback(OnTraceAsking, &stats);
    default:
      return quillon_set_trace_callback(OnTrace, &stats);
  }
}

void RandomHost::ProcessEvents() { quillon_process_events(AnyCtrl()); }

// A host may take its window away while a viewer lives in it, or make one for later.
void RandomHost::HostWindow() {
  if (!hostWindows.available()) return;
  if (hostWindows.count() > 0 && in.Chance(50))
    hostWindows.Destroy(static_cast<std::size_t>(in.Pick(0, static_cast<int>(hostWindows.count()) - 1)));
  else if (hostWindows.count() < 8)
    hostWindows.Make(in.Pick(1, 800), in.Pick(1, 600));
}

void RandomHost::NullControl() {
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
}  // namespace quillon::stress
