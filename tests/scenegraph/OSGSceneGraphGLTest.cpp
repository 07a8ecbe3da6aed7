#include <gtest/gtest.h>

#include <vector>

#include "RenderHelpers.h"
#include "scenegraph/ISGBuilder.h"
#include "scenegraph/OSGSceneGraph.h"
#include "scenegraph/OffscreenRenderArea.h"
#include "scenegraph/osgFakeCamera.h"
#include "vrml/Nodes.h"

// The holder drawing into an offscreen render area: these tests need OpenGL.
namespace quillon {
namespace {

using test::MeanColour;

constexpr int kWidth = 160, kHeight = 120;

bool Load(OSGSceneGraph& holder, const char* vrml) {
  VRML::Group root;
  if (root.parse(vrml) != 0) return false;
  return holder.sceneGraphBuilder()->build(root);
}

std::vector<unsigned char> Render(OSGSceneGraph& holder) {
  std::vector<unsigned char> pixels(static_cast<std::size_t>(kWidth) * kHeight * 4);
  holder.render();
  EXPECT_TRUE(holder.renderArea()->readPixels(pixels.data(), pixels.size()));
  return pixels;
}

class OffscreenHolder : public ::testing::Test {
 protected:
  void SetUp() override {
    holder.initialize();
    auto area = OffscreenRenderArea::create(kWidth, kHeight);
    if (!area) GTEST_SKIP() << "no EGL context on this machine";
    holder.attachToWindow(std::move(area));
    ASSERT_NE(holder.renderArea(), nullptr);
  }
  OSGSceneGraph holder;
};

TEST_F(OffscreenHolder, EmptySceneShowsTheBackground) {
  const auto pixels = Render(holder);
  const auto mean = MeanColour(pixels, kWidth, 0, 0, kWidth, kHeight);
  EXPECT_NEAR(mean.r, 0.3 * 255, 2);
  EXPECT_NEAR(mean.g, 0.3 * 255, 2);
  EXPECT_NEAR(mean.b, 0.5 * 255, 2);
  EXPECT_EQ(pixels[3], 255);
}

TEST_F(OffscreenHolder, ShowsTheBoxInItsHueAndHidesItByName) {
  ASSERT_TRUE(Load(holder,
                   "#VRML V2.0 utf8\n"
                   "DEF Probe Transform { children [ Shape {\n"
                   "  appearance Appearance { material Material { diffuseColor 1 0 0 emissiveColor 0.5 0 0 } }\n"
                   "  geometry Box { size 0.1 0.1 0.1 } } ] }\n"));
  float x, y, z, r;
  holder.boundingSphere(x, y, z, r);
  holder.camera().zoomToSphere(x, y, z, r);
  auto centre = MeanColour(Render(holder), kWidth, kWidth / 2 - 5, kHeight / 2 - 5, kWidth / 2 + 5, kHeight / 2 + 5);
  EXPECT_GT(centre.r, 120);
  EXPECT_LT(centre.g, 30);
  EXPECT_LT(centre.b, 30);

  ASSERT_TRUE(holder.setSwitchChoice("Probe", -1));
  centre = MeanColour(Render(holder), kWidth, kWidth / 2 - 5, kHeight / 2 - 5, kWidth / 2 + 5, kHeight / 2 + 5);
  EXPECT_NEAR(centre.b, 0.5 * 255, 2);

  ASSERT_TRUE(holder.setSwitchChoice("Probe", 0));
  holder.setForegroundOverride(true, 0, 1, 0);
  centre = MeanColour(Render(holder), kWidth, kWidth / 2 - 5, kHeight / 2 - 5, kWidth / 2 + 5, kHeight / 2 + 5);
  EXPECT_GT(centre.g, centre.b);
  holder.setForegroundOverride(false, 0, 0, 0);
  centre = MeanColour(Render(holder), kWidth, kWidth / 2 - 5, kHeight / 2 - 5, kWidth / 2 + 5, kHeight / 2 + 5);
  EXPECT_GT(centre.r, 120);
}

TEST_F(OffscreenHolder, DetachedHolderNoLongerDraws) {
  holder.detachFromWindow();
  EXPECT_EQ(holder.renderArea(), nullptr);
  EXPECT_NE(dynamic_cast<osgFakeCamera*>(&holder.camera()), nullptr);
  holder.render();
}

}  // namespace
}  // namespace quillon
