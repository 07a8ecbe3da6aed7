// The viewer embedded into a plain X11 window of a host that knows nothing of Qt, through the C
// interface: what the screen shows, and input that reaches it only through the host's own event
// loop. Needs a display (xvfb-run -a without one).
#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "quillon/quillon.h"

namespace {

constexpr int kWidth = 600, kHeight = 500;

constexpr const char* kRedBox = R"(<?xml version="1.0"?>
<Visualisation><Version>1.0</Version><Scene format="VRML97"><![CDATA[#VRML V2.0 utf8
Shape {
  appearance Appearance { material Material { diffuseColor 1 0 0 emissiveColor 0.6 0 0 } }
  geometry Box { size 0.1 0.1 0.1 }
}
]]></Scene></Visualisation>
)";

struct Pixel {
  int r = 0, g = 0, b = 0;
};

bool isRed(Pixel p) { return p.r > 100 && p.g < 60 && p.b < 60; }
bool isBackground(Pixel p) { return std::abs(p.r - 77) < 8 && std::abs(p.g - 77) < 8 && std::abs(p.b - 128) < 8; }

/// A host's top-level window, made and mapped with plain xcb, and input sent into it.
class HostWindow {
 public:
  HostWindow() : connection(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(connection)) return;
    screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, kWidth, kHeight, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, XCB_CW_BACK_PIXEL, &screen->black_pixel);
    xcb_map_window(connection, window);
    xcb_flush(connection);
  }
  ~HostWindow() {
    destroy();
    xcb_disconnect(connection);
  }

  unsigned long id() const { return window; }
  void destroy() {
    if (window) xcb_destroy_window(connection, window);
    xcb_flush(connection);
    window = 0;
  }

  /// What the X server shows at a point of the window, its children included.
  Pixel shownAt(int x, int y) {
    auto* image = xcb_get_image_reply(
        connection, xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window, int16_t(x), int16_t(y), 1, 1, ~0u),
        nullptr);
    Pixel p;
    if (image && xcb_get_image_data_length(image) >= 4) {
      const uint8_t* bgrx = xcb_get_image_data(image);  // a 24-bit TrueColor visual, little-endian
      p = {bgrx[2], bgrx[1], bgrx[0]};
    }
    std::free(image);
    return p;
  }

  /// The viewer's window: the first child of the host's.
  xcb_window_t viewer() {
    auto* tree = xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr);
    const xcb_window_t child = tree && xcb_query_tree_children_length(tree) > 0 ? xcb_query_tree_children(tree)[0] : 0;
    std::free(tree);
    return child;
  }

  /// A press, release or move of the first button, as the X server would send it to the viewer.
  void send(xcb_window_t target, uint8_t type, int x, int y) {
    xcb_button_press_event_t event{};  // press, release and motion share this layout
    event.response_type = type;
    event.detail = type == XCB_MOTION_NOTIFY ? 0 : 1;
    event.root = screen->root;
    event.event = target;
    event.root_x = event.event_x = int16_t(x);
    event.root_y = event.event_y = int16_t(y);
    event.state = type == XCB_BUTTON_PRESS ? 0 : XCB_BUTTON_MASK_1;
    event.same_screen = 1;
    xcb_send_event(connection, 0, target, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&event));
    xcb_flush(connection);
  }

 private:
  xcb_connection_t* connection;
  xcb_screen_t* screen = nullptr;
  xcb_window_t window = 0;
};

class EmbeddedViewerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NE(host.id(), 0u) << "no X11 display";
    ctrl = quillon_create();
    ASSERT_NE(ctrl, nullptr);
  }
  void TearDown() override {
    quillon_destroy_window(ctrl);
    quillon_destroy(ctrl);
  }

  void loadRedBoxInFront() {
    ASSERT_EQ(quillon_load_document(ctrl, kRedBox, nullptr, nullptr), 0);
    quillon_DisableNavigationControls_v1(ctrl);  // the render area fills the viewer window
    setCamera();
  }
  // Half a metre in front of the cube; like every change of the view, it lets the viewer's
  // pending window events run.
  void setCamera() {
    char position[] = "0 0 0.5", orientation[] = "0 1 0 0", nearText[] = "0.01", farText[] = "10", focal[] = "0.5",
         zoom[] = "1";
    char *p = position, *o = orientation, *n = nearText, *f = farText, *d = focal, *z = zoom;
    EXPECT_EQ(quillon_SetCameraPosition_v1(ctrl, &p, &o, &n, &f, &d, &z), 1);
    for (char* s : {p, o, n, f, d, z}) quillon_free(s);
  }
  std::string orientation() {
    char* texts[6] = {};
    quillon_GetCameraPosition_v1(ctrl, &texts[0], &texts[1], &texts[2], &texts[3], &texts[4], &texts[5]);
    std::string text = texts[1] ? texts[1] : "";
    for (char* t : texts) quillon_free(t);
    return text;
  }
  // Handles the viewer's events the way a host's loop would, for a while.
  void loop(int milliseconds) {
    for (int waited = 0; waited < milliseconds; waited += 10) {
      quillon_process_events(ctrl);
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  }

  // Keeps the viewer busy the way a streaming host would, until the screen shows the box.
  bool waitForBoxOnScreen() {
    for (int i = 0; i < 100; ++i) {
      if (isRed(host.shownAt(kWidth / 2, kHeight / 2))) return true;
      setCamera();
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return false;
  }
  int render(std::size_t bytes) {
    rgba.assign(bytes, 0);
    return quillon_render_rgba(ctrl, rgba.data(), rgba.size());
  }

  HostWindow host;
  QuillonCtrl* ctrl = nullptr;
  std::vector<unsigned char> rgba;
  static constexpr std::size_t kBytes = static_cast<std::size_t>(kWidth) * kHeight * 4;
};

// Made at the host's size, or smaller and then resized to it: the box in the middle, the
// background to the corners (outside the first size too), and the same in the rendered pixels.
TEST_F(EmbeddedViewerTest, ViewerWindowShowsTheSceneInsideTheHostWindowAndFollowsItsResize) {
  for (const bool resized : {false, true}) {
    SCOPED_TRACE(resized ? "resized" : "made at size");
    if (resized) {  // a control of its own, as a second host would have
      quillon_destroy_window(ctrl);
      quillon_destroy(ctrl);
      ctrl = quillon_create();
      ASSERT_EQ(quillon_create_window(ctrl, host.id(), 500, 480), 0);
      loadRedBoxInFront();
      quillon_resize(ctrl, kWidth, kHeight);
    } else {
      ASSERT_EQ(quillon_create_window(ctrl, host.id(), kWidth, kHeight), 0);
      loadRedBoxInFront();
    }
    ASSERT_TRUE(waitForBoxOnScreen());
    EXPECT_TRUE(isBackground(host.shownAt(5, 5)));
    EXPECT_TRUE(isBackground(host.shownAt(kWidth - 5, kHeight - 5)));
    ASSERT_EQ(render(kBytes), 0);
    const unsigned char* centre = &rgba[(static_cast<std::size_t>(kHeight / 2) * kWidth + kWidth / 2) * 4];
    EXPECT_TRUE(isRed({centre[0], centre[1], centre[2]}));
    EXPECT_NE(render(kBytes - 1), 0);
  }
}

TEST_F(EmbeddedViewerTest, ParentsThatCannotBeEmbeddedIntoAreRefused) {
  EXPECT_NE(quillon_create_window(ctrl, 0x7ffffff0ul, kWidth, kHeight), 0);  // no such window
  EXPECT_NE(quillon_create_window(ctrl, 1ul << 40, kWidth, kHeight), 0);     // not an X11 id
  EXPECT_NE(quillon_create_window(ctrl, host.id(), 0, kHeight), 0);

  const std::string display = std::getenv("DISPLAY") ? std::getenv("DISPLAY") : "";
  unsetenv("DISPLAY");
  EXPECT_NE(quillon_create_window(ctrl, host.id(), kWidth, kHeight), 0);
  setenv("DISPLAY", display.c_str(), 1);

  EXPECT_EQ(quillon_create_window(ctrl, host.id(), kWidth, kHeight), 0);
}

TEST_F(EmbeddedViewerTest, HostMayDestroyItsWindowFirst) {
  ASSERT_EQ(quillon_create_window(ctrl, host.id(), kWidth, kHeight), 0);
  loadRedBoxInFront();
  host.destroy();
  setCamera();  // the viewer carries on without a window on the screen
  quillon_destroy_window(ctrl);
  EXPECT_NE(render(kBytes), 0);
}

// A host with an event loop of its own: the viewer follows the mouse only through
// quillon_process_events.
TEST_F(EmbeddedViewerTest, DragsReachTheViewerThroughTheHostsLoop) {
  ASSERT_EQ(quillon_create_window(ctrl, host.id(), kWidth, kHeight), 0);
  ASSERT_EQ(quillon_load_document(ctrl, kRedBox, nullptr, nullptr), 0);
  quillon_DisableNavigationControls_v1(ctrl);
  quillon_ViewAll_v2(ctrl);
  loop(300);
  const xcb_window_t viewer = host.viewer();
  ASSERT_NE(viewer, 0u);

  const std::string before = orientation();
  const int x = kWidth / 2, y = kHeight / 2;
  host.send(viewer, XCB_BUTTON_PRESS, x, y);
  for (int step = 1; step <= 10; ++step) host.send(viewer, XCB_MOTION_NOTIFY, x + 15 * step, y);
  std::string after = before;
  for (int i = 0; i < 100 && after == before; ++i) {
    loop(20);
    after = orientation();
  }
  host.send(viewer, XCB_BUTTON_RELEASE, x + 150, y);
  loop(50);
  EXPECT_NE(after, before) << "the drag did not turn the camera";
}

}  // namespace
