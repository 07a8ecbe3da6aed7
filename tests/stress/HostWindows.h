#pragma once
// The random host's own top-level X11 windows, for viewers embedded into them.

#include <cstdint>
#include <cstdlib>
#include <vector>

#ifdef QUILLON_STRESS_X11
#include <xcb/xcb.h>
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

}  // namespace quillon::stress
