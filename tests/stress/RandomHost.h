#pragma once
// A host that calls every function of the C interface in random order, with random, edge and
// real input. A seed makes the same calls again.

#include <cstdint>
#include <string>
#include <vector>

#include "HostInputs.h"
#include "HostWindows.h"
#include "quillon/quillon.h"

namespace quillon::stress {

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
void OnTrace(const char* line, void* user);

class RandomHost {
 public:
  /// With x11, viewers are embedded into X11 windows of the host's own too, where it can.
  RandomHost(std::uint64_t seed, const RealInputs& real, bool x11) : random(seed), in(random, real), hostWindows(x11) {}
  ~RandomHost();
  RandomHost(const RandomHost&) = delete;
  RandomHost& operator=(const RandomHost&) = delete;

  /// One call, of a kind drawn by weight.
  void Step();
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

  Control& Live();
  QuillonCtrl* AnyCtrl() { return in.Chance(3) ? nullptr : Live().ctrl; }
  void Broken(const std::string& what) {
    if (stats.broken.empty()) stats.broken = what;
  }

  void Create();
  void Destroy();
  void CreateWindow();
  void Resize();
  void DestroyWindow();
  void Render();
  void ErrorText();
  void Version();
  void Background();
  void Send();
  void Initialize();
  void LoadDocument();
  void Foreground();
  void Switches();
  void GetCamera();
  void SetCamera();
  void MinimalSize();
  void Hide();
  void ViewAll();
  void Thresholds();
  void Mode();
  void Free();
  void TraceCallback();
  void ProcessEvents();
  void NullControl();
  void HostWindow();

  static const std::vector<Choice>& Choices();

  Random random;
  InputMaker in;
  HostWindows hostWindows;
  std::vector<Control> controls;
  Document last;  // the last document sent to any control, for messages that fit another one
  // What the host believes of the window that the viewers draw into.
  int areaWidth = 0, areaHeight = 0;
};

}  // namespace quillon::stress
