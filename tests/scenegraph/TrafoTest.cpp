#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "scenegraph/Trafo.h"
#include "scenegraph/TrafoTransform.h"

namespace quillon {
namespace {

void ExpectNear(const osg::Vec3d& a, const osg::Vec3d& b) {
  EXPECT_NEAR(a.x(), b.x(), 1e-6);
  EXPECT_NEAR(a.y(), b.y(), 1e-6);
  EXPECT_NEAR(a.z(), b.z(), 1e-6);
}

TEST(Trafo, AppliesItsPartsInVrmlOrder) {
  Trafo t;
  t.setCenter({1, 0, 0});
  t.setOrientation(QuatFromAxisAngle(0, 0, 1, std::numbers::pi / 2));
  t.setScaling({2, 1, 1});
  t.setTranslation({0, 0, 5});
  // The point (2,0,0): minus the centre (1,0,0), scaled to (2,0,0), turned a quarter about z
  // to (0,2,0), plus the centre, plus the translation.
  ExpectNear(osg::Vec3d(2, 0, 0) * t.getMatrix(), osg::Vec3d(1, 2, 5));
}

TEST(TrafoTransform, MovingKeepsTheOtherParts) {
  Trafo t;
  t.setCenter({10, 0, 0});
  t.setOrientation(QuatFromAxisAngle(0, 1, 0, 0.7));
  t.setScaling({2, 3, 1});
  t.setTranslation({1, 2, 3});
  osg::ref_ptr<TrafoTransform> node = new TrafoTransform;
  node->setTrafo(t);
  for (const osg::Vec3d moved : {osg::Vec3d(-5, 40, 7), osg::Vec3d(0, 0, 0), osg::Vec3d(1e6, -1e6, 3)}) {
    node->setTranslation(moved);
    t.setTranslation(moved);
    EXPECT_EQ(node->getTrafo().getTranslation(), moved);
    const osg::Matrixd expected = t.getMatrix();
    for (int i = 0; i < 16; ++i) EXPECT_NEAR(node->getMatrix().ptr()[i], expected.ptr()[i], 1e-6) << i;
  }
  // A translation that is not finite leaves the matrix as the trafo would make it.
  node->setTranslation({std::nan(""), 0, 0});
  EXPECT_TRUE(node->getMatrix().valid());
}

// A document may give a translation that the matrix leaves out, and a route may send one; the
// moves and turns that follow must still make the matrix that the trafo makes.
TEST(TrafoTransform, ATranslationThatIsNotFiniteLeavesNothingBehind) {
  const double inf = std::numeric_limits<double>::infinity();
  auto expectMatrixOf = [](const TrafoTransform& node, const Trafo& t) {
    ASSERT_TRUE(node.getMatrix().valid());
    const osg::Matrixd expected = t.getMatrix();
    for (int i = 0; i < 16; ++i) EXPECT_NEAR(node.getMatrix().ptr()[i], expected.ptr()[i], 1e-6) << i;
  };
  Trafo t;
  t.setCenter({10, 0, 0});
  t.setScaleOrientation(QuatFromAxisAngle(1, 0, 0, 0.3));
  t.setTranslation({-inf, 50, 100});
  osg::ref_ptr<TrafoTransform> node = new TrafoTransform;
  node->setTrafo(t);
  node->setTranslation({1, 2, 3});
  t.setTranslation({1, 2, 3});
  expectMatrixOf(*node, t);

  // A position that is not finite, then a turn that rebuilds the matrix, then a good position.
  node->setTranslation({0, inf, 0});
  Trafo turned = node->getTrafo();
  turned.setOrientation(QuatFromAxisAngle(0, 1, 0, 0.5));
  node->setTrafo(turned);
  node->setTranslation({4, 5, 6});
  turned.setTranslation({4, 5, 6});
  expectMatrixOf(*node, turned);
}

TEST(Trafo, ScaleOrientationTurnsTheScaleAxes) {
  Trafo t;
  t.setScaling({2, 1, 1});
  t.setScaleOrientation(QuatFromAxisAngle(0, 0, 1, std::numbers::pi / 2));
  // Scaling along the turned x axis, i.e. along y.
  ExpectNear(osg::Vec3d(0, 1, 0) * t.getMatrix(), osg::Vec3d(0, 2, 0));
  ExpectNear(osg::Vec3d(1, 0, 0) * t.getMatrix(), osg::Vec3d(1, 0, 0));
}

TEST(Trafo, KeepsTheQuaternionUnnormalisedButRotatesByItsDirection) {
  Trafo t;
  const osg::Quat q = QuatFromAxisAngle(0, 2, 0, 3.14159);
  t.setOrientation(q);
  EXPECT_EQ(t.getOrientation(), q);
  EXPECT_NEAR(osg::Vec3d(q.x(), q.y(), q.z()).length(), 2 * std::sin(3.14159 / 2), 1e-9);
  const osg::Vec3d turned = osg::Vec3d(1, 0, 0) * t.getMatrix();
  EXPECT_NEAR(turned.x(), -1.0, 1e-9);
  EXPECT_NEAR(turned.z(), 0.0, 1e-5);
}

TEST(Trafo, MatrixStaysFiniteForDegenerateParts) {
  const double nan = std::nan("");
  Trafo zeroRotation, nanRotation, nanTranslation;
  zeroRotation.setOrientation(osg::Quat(0, 0, 0, 0));
  nanRotation.setOrientation(QuatFromAxisAngle(0, 1, 0, nan));
  nanTranslation.setTranslation({nan, 1, 1});
  for (const Trafo& t : {zeroRotation, nanRotation, nanTranslation}) EXPECT_TRUE(t.getMatrix().valid());
}

TEST(TrafoTransform, MatrixFollowsTheTrafo) {
  osg::ref_ptr<TrafoTransform> node = new TrafoTransform();
  Trafo t = node->getTrafo();
  t.setTranslation({1000, 2000, 3000});
  node->setTrafo(t);
  EXPECT_EQ(node->getMatrix().getTrans(), osg::Vec3d(1000, 2000, 3000));
  EXPECT_EQ(node->getTrafo(), t);
}

TEST(Trafo, SetMatrixRecoversTranslationRotationAndScale) {
  Trafo t;
  t.setOrientation(QuatFromAxisAngle(1, 0, 0, 0.5));
  t.setScaling({3, 3, 3});
  t.setTranslation({4, 5, 6});
  Trafo back;
  back.setMatrix(t.getMatrix());
  ExpectNear(back.getTranslation(), {4, 5, 6});
  ExpectNear(back.getScaling(), {3, 3, 3});
  EXPECT_NEAR(back.getOrientation().w(), std::cos(0.25), 1e-9);
}

}  // namespace
}  // namespace quillon
