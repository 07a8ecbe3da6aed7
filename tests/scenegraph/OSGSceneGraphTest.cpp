#include <gtest/gtest.h>

#include <cmath>

#include "scenegraph/IRenderArea.h"
#include "scenegraph/ISGBuilder.h"
#include "scenegraph/OSGSceneGraph.h"
#include "scenegraph/osgFakeCamera.h"
#include "vrml/Nodes.h"

namespace quillon {
namespace {

bool Load(OSGSceneGraph& holder, const char* vrml) {
  VRML::Group root;
  if (root.parse(vrml) != 0) return false;
  return holder.sceneGraphBuilder()->build(root);
}

TEST(OSGSceneGraph, WithoutSceneOrWindowEveryOperationIsHarmless) {
  OSGSceneGraph holder;
  float x = 1, y = 1, z = 1, r = 1;
  holder.boundingSphere(x, y, z, r);
  EXPECT_EQ(x + y + z + r, 0.0f);
  EXPECT_NE(dynamic_cast<osgFakeCamera*>(&holder.camera()), nullptr);
  holder.setBackgroundColours(1, 0, 0, 0, 0, 1);  // no scene: ignored
  EXPECT_EQ(holder.backgroundColour(), osg::Vec4(0.3f, 0.3f, 0.5f, 1.0f));
  holder.render();
  holder.refresh(1);
  EXPECT_FALSE(holder.setSwitchChoice("A", -1));
  holder.attachToWindow(nullptr);
  EXPECT_EQ(holder.renderArea(), nullptr);

  holder.initialize();
  holder.setBackgroundColours(1, 0, 0, 0, 0, 1);
  EXPECT_EQ(holder.backgroundColour(), osg::Vec4(0.5f, 0.0f, 0.5f, 1.0f));
}

TEST(OSGSceneGraph, FailedBuildKeepsTheSceneAndItsRegistries) {
  OSGSceneGraph holder;
  holder.initialize();
  ASSERT_TRUE(
      Load(holder, "#VRML V2.0 utf8\nDEF A Transform { children [ Shape { geometry Box { size 2 2 2 } } ] }\n"));
  osg::Group* first = holder.root();
  ASSERT_TRUE(holder.registry().findNamed("A"));

  // Only a line set, and a node of a kind that is skipped: nothing to show.
  EXPECT_FALSE(Load(holder, "#VRML V2.0 utf8\nWorldInfo { }\n"));
  EXPECT_FALSE(Load(holder, "#VRML V2.0 utf8\nDEF B Material { }\n"));
  EXPECT_EQ(holder.root(), first);
  EXPECT_TRUE(holder.registry().findNamed("A"));

  ASSERT_TRUE(Load(holder, "#VRML V2.0 utf8\nDEF C Group { }\n"));
  EXPECT_NE(holder.root(), first);
  EXPECT_FALSE(holder.registry().findNamed("A"));
  EXPECT_TRUE(holder.registry().findNamed("C"));
  holder.clearRegistries();
  EXPECT_FALSE(holder.registry().findNamed("C"));
}

// Builds a scene with a tree of degenerate transforms; the bounds stay finite.
TEST(OSGSceneGraph, DegenerateTransformsKeepTheBoundsFinite) {
  OSGSceneGraph holder;
  holder.initialize();
  ASSERT_TRUE(
      Load(holder,
           "#VRML V2.0 utf8\n"
           "Transform { scale 0 0 0 children [ Shape { geometry Sphere { radius 1 } } ] }\n"
           "Transform { rotation 0 0 0 1 children [ Shape { geometry Box { size 2 2 2 } } ] }\n"
           "Transform { rotation 0 1 0 nan translation 1 0 0 children [ Shape { geometry Cone { height 2 } } ] }\n"));
  float x, y, z, r;
  holder.boundingSphere(x, y, z, r);
  EXPECT_TRUE(std::isfinite(x) && std::isfinite(y) && std::isfinite(z) && std::isfinite(r));
  EXPECT_GT(r, 0.0f);
}

}  // namespace
}  // namespace quillon
