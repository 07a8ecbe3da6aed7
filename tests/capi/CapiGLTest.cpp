// The C interface with an offscreen render area: these tests need OpenGL.
#include <gtest/gtest.h>

#include <vector>

#include "quillon/quillon.h"

namespace {

TEST(CApi, ProcessEventsLeavesAnOffscreenViewerAlone) {
  QuillonCtrl* ctrl = quillon_create();
  quillon_process_events(ctrl);  // no window yet
  ASSERT_EQ(quillon_create_window(ctrl, 0, 64, 48), 0);
  quillon_process_events(ctrl);
  std::vector<unsigned char> rgba(64 * 48 * 4);
  EXPECT_EQ(quillon_render_rgba(ctrl, rgba.data(), rgba.size()), 0);
  quillon_destroy_window(ctrl);
  quillon_destroy(ctrl);
}

}  // namespace
