// A host without Qt that runs its own event loop: the viewer embedded into its plain X11 window
// follows the mouse only through quillon_process_events. Needs a display (xvfb-run -a).
#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>

#include "quillon/quillon.h"

namespace {

constexpr int kWidth = 600, kHeight = 500;

constexpr const char* kBox = R"(<?xml version="1.0"?>
<Visualisation><Version>1.0</Version><Scene format="VRML97"><![CDATA[#VRML V2.0 utf8
Shape {
  appearance Appearance { material Material { diffuseColor 1 0 0 emissiveColor 0.6 0 0 } }
  geometry Box { size 0.1 0.1 0.1 }
}
]]></Scene></Visualisation>
)";

/// The host: one top-level window, and input sent to the viewer's window inside it.
class Host {
 public:
  Host() : connection(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(connection)) return;
    screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, kWidth, kHeight, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
    xcb_map_window(connection, window);
    xcb_flush(connection);
  }
  ~Host() {
    if (window) xcb_destroy_window(connection, window);
    xcb_disconnect(connection);
  }
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  bool ok() const { return window != 0; }
  unsigned long id() const { return window; }

  /// The viewer's window: the first child of the host's.
  xcb_window_t viewer() {
    xcb_query_tree_reply_t* tree = xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr);
    xcb_window_t child = 0;
    if (tree && xcb_query_tree_children_length(tree) > 0) child = xcb_query_tree_children(tree)[0];
    std::free(tree);
    return child;
  }

  /// A button press, moves and a release, as the X server would send them to the viewer.
  void drag(xcb_window_t target, int x0, int y0, int x1, int y1) {
    send(target, XCB_BUTTON_PRESS, x0, y0, 1, 0);
    for (int step = 1; step <= 10; ++step)
      send(target, XCB_MOTION_NOTIFY, x0 + (x1 - x0) * step / 10, y0 + (y1 - y0) * step / 10, 0, XCB_BUTTON_MASK_1);
  }
  void release(xcb_window_t target, int x, int y) { send(target, XCB_BUTTON_RELEASE, x, y, 1, XCB_BUTTON_MASK_1); }

 private:
  void send(xcb_window_t target, uint8_t type, int x, int y, uint8_t button, uint16_t state) {
    xcb_button_press_event_t event;  // press, release and motion share this layout
    std::memset(&event, 0, sizeof event);
    event.response_type = type;
    event.detail = button;
    event.time = XCB_CURRENT_TIME;
    event.root = screen->root;
    event.event = target;
    event.root_x = event.event_x = static_cast<int16_t>(x);
    event.root_y = event.event_y = static_cast<int16_t>(y);
    event.state = state;
    event.same_screen = 1;
    xcb_send_event(connection, 0, target, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&event));
    xcb_flush(connection);
  }

  xcb_connection_t* connection;
  xcb_screen_t* screen = nullptr;
  xcb_window_t window = 0;
};

std::string Orientation(QuillonCtrl* ctrl) {
  char* texts[6] = {};
  quillon_GetCameraPosition_v1(ctrl, &texts[0], &texts[1], &texts[2], &texts[3], &texts[4], &texts[5]);
  std::string orientation = texts[1] ? texts[1] : "";
  for (char* t : texts) quillon_free(t);
  return orientation;
}

// Handles the viewer's events the way a host's loop would, for a while.
void Loop(QuillonCtrl* ctrl, int milliseconds) {
  for (int waited = 0; waited < milliseconds; waited += 10) {
    quillon_process_events(ctrl);
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

TEST(HostEvents, DragsReachTheEmbeddedViewerThroughTheHostsLoop) {
  Host host;
  ASSERT_TRUE(host.ok()) << "no X11 display";
  QuillonCtrl* ctrl = quillon_create();
  ASSERT_EQ(quillon_create_window(ctrl, host.id(), kWidth, kHeight), 0);
  ASSERT_EQ(quillon_load_document(ctrl, kBox, nullptr, nullptr), 0);
  quillon_DisableNavigationControls_v1(ctrl);  // the render area fills the viewer window
  quillon_ViewAll_v2(ctrl);
  Loop(ctrl, 300);
  const xcb_window_t viewer = host.viewer();
  ASSERT_NE(viewer, 0u);

  const std::string before = Orientation(ctrl);
  host.drag(viewer, kWidth / 2, kHeight / 2, kWidth / 2 + 150, kHeight / 2);
  std::string after = before;
  for (int i = 0; i < 100 && after == before; ++i) {
    Loop(ctrl, 20);
    after = Orientation(ctrl);
  }
  host.release(viewer, kWidth / 2 + 150, kHeight / 2);
  Loop(ctrl, 50);
  EXPECT_NE(after, before) << "the drag did not turn the camera";

  quillon_destroy_window(ctrl);
  quillon_destroy(ctrl);
}

}  // namespace
