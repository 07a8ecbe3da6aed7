// Where things stand and how they are seen: the trafo of a transform node, with its matrix, and
// the camera.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <osg/Camera>

#include "scenegraph/Trafo.h"
#include "scenegraph/TrafoTransform.h"
#include "scenegraph/osgCamera.h"

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

  // The scale orientation turns the scale axes: the scaling goes along the turned x axis, y.
  Trafo s;
  s.setScaling({2, 1, 1});
  s.setScaleOrientation(QuatFromAxisAngle(0, 0, 1, std::numbers::pi / 2));
  ExpectNear(osg::Vec3d(0, 1, 0) * s.getMatrix(), osg::Vec3d(0, 2, 0));
  ExpectNear(osg::Vec3d(1, 0, 0) * s.getMatrix(), osg::Vec3d(1, 0, 0));

  // The quaternion is kept unnormalised, and rotates by its direction.
  Trafo u;
  const osg::Quat q = QuatFromAxisAngle(0, 2, 0, 3.14159);
  u.setOrientation(q);
  EXPECT_EQ(u.getOrientation(), q);
  EXPECT_NEAR(osg::Vec3d(q.x(), q.y(), q.z()).length(), 2 * std::sin(3.14159 / 2), 1e-9);
  const osg::Vec3d turned = osg::Vec3d(1, 0, 0) * u.getMatrix();
  EXPECT_NEAR(turned.x(), -1.0, 1e-9);
  EXPECT_NEAR(turned.z(), 0.0, 1e-5);
}

// Moving keeps the other parts. A document may give a translation that the matrix leaves out,
// and a route may send one; the moves and turns that follow must still make the matrix that the
// trafo makes.
TEST(TrafoTransform, MatrixFollowsTheTrafoThroughMovesAndTurns) {
  const double inf = std::numeric_limits<double>::infinity();
  auto expectMatrixOf = [](const TrafoTransform& node, const Trafo& t) {
    ASSERT_TRUE(node.getMatrix().valid());
    EXPECT_EQ(node.getTrafo().getTranslation(), t.getTranslation());
    const osg::Matrixd expected = t.getMatrix();
    for (int i = 0; i < 16; ++i) EXPECT_NEAR(node.getMatrix().ptr()[i], expected.ptr()[i], 1e-6) << i;
  };
  for (const double startX : {1.0, -inf}) {
    SCOPED_TRACE(startX);
    Trafo t;
    t.setCenter({10, 0, 0});
    t.setOrientation(QuatFromAxisAngle(0, 1, 0, 0.7));
    t.setScaleOrientation(QuatFromAxisAngle(1, 0, 0, 0.3));
    t.setScaling({2, 3, 1});
    t.setTranslation({startX, 50, 100});
    osg::ref_ptr<TrafoTransform> node = new TrafoTransform;
    node->setTrafo(t);
    if (std::isfinite(startX)) expectMatrixOf(*node, t);
    for (const osg::Vec3d moved : {osg::Vec3d(-5, 40, 7), osg::Vec3d(0, 0, 0), osg::Vec3d(1e6, -1e6, 3)}) {
      node->setTranslation(moved);
      t.setTranslation(moved);
      expectMatrixOf(*node, t);
    }
    // A position that is not finite, then a turn that rebuilds the matrix, then a good position.
    node->setTranslation({std::nan(""), 0, 0});
    EXPECT_TRUE(node->getMatrix().valid());
    node->setTranslation({0, inf, 0});
    Trafo turned = node->getTrafo();
    turned.setOrientation(QuatFromAxisAngle(0, 1, 0, 0.5));
    node->setTrafo(turned);
    node->setTranslation({4, 5, 6});
    turned.setTranslation({4, 5, 6});
    expectMatrixOf(*node, turned);
  }
}

TEST(Trafo, MatrixStaysFiniteForDegenerateParts) {
  const double nan = std::nan("");
  Trafo zeroRotation, nanRotation, nanTranslation;
  zeroRotation.setOrientation(osg::Quat(0, 0, 0, 0));
  nanRotation.setOrientation(QuatFromAxisAngle(0, 1, 0, nan));
  nanTranslation.setTranslation({nan, 1, 1});
  for (const Trafo& t : {zeroRotation, nanRotation, nanTranslation}) EXPECT_TRUE(t.getMatrix().valid());
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

struct Pose {
  double x, y, z, qx, qy, qz, qw;
};

Pose PoseOf(const ICamera& c) {
  Pose p{};
  c.getPosition(p.x, p.y, p.z);
  c.getOrientation(p.qx, p.qy, p.qz, p.qw);
  return p;
}

TEST(osgCamera, OrientationIsStoredNormalisedAndReadAsAxisAngle) {
  osgCamera c;
  double x = 9, y = 9, z = 9, a = 9;
  c.getOrientationAxisAngle(x, y, z, a);
  EXPECT_EQ(a, 0.0);
  EXPECT_EQ(x * x + y * y + z * z, 0.0);  // undivided axis of the identity

  c.setOrientation(0, 0, 0, 2);
  Pose p = PoseOf(c);
  EXPECT_EQ(p.qw, 1.0);
  EXPECT_EQ(p.qx + p.qy + p.qz, 0.0);

  c.setOrientationAxisAngle(0, 1, 0, 1.0);
  c.getOrientationAxisAngle(x, y, z, a);
  EXPECT_NEAR(a, 1.0, 1e-6);
  EXPECT_NEAR(y, 1.0, 1e-6);

  // A longer axis weighs more against the cosine once the quaternion is normalised.
  c.setOrientationAxisAngle(0, 3, 0, 1.0);
  c.getOrientationAxisAngle(x, y, z, a);
  EXPECT_NEAR(a, 2 * std::acos(std::cos(0.5) / std::hypot(3 * std::sin(0.5), std::cos(0.5))), 1e-6);
  EXPECT_NEAR(y, 1.0, 1e-6);

  const Pose before = PoseOf(c);
  c.setOrientation(0, 0, 0, 0);  // no rotation at all: ignored
  EXPECT_EQ(PoseOf(c).qw, before.qw);
}

TEST(osgCamera, ZoomToSphereFramesThreeQuartersOfTheRadius) {
  osgCamera c;
  c.zoomToSphere(10, 20, 30, 0);
  c.zoomToSphere(10, 20, 30, -5);
  Pose p = PoseOf(c);
  EXPECT_EQ(p.x + p.y + p.z, 0.0);

  c.zoomToSphere(10, 20, 30, 100);
  p = PoseOf(c);
  const double distance = 75 / std::sin(std::numbers::pi / 8);
  EXPECT_NEAR(p.x, 10, 1e-5);
  EXPECT_NEAR(p.y, 20, 1e-5);
  EXPECT_NEAR(p.z, 30 + distance, 1e-4);  // looking down -z at the centre
  double focal = 0;
  c.getFocalDistance(focal);
  EXPECT_NEAR(focal, distance, 1e-4);

  // The camera keeps floats (the C interface's test reads that back as text): a position beyond
  // a float is refused rather than stored as infinity.
  c.setPosition(1e39, 0, 0);
  EXPECT_NEAR(PoseOf(c).x, 10, 1e-5);
}

TEST(osgCamera, ZoomScalesTheViewAndItsFactorRoundTrips) {
  osgCamera c;
  double fov0 = 0, fov = 0, zoom = 0;
  c.getFieldOfView(fov0);
  c.zoom(0.5);
  c.getFieldOfView(fov);
  EXPECT_NEAR(std::tan(fov / 2), 0.5 * std::tan(fov0 / 2), 1e-6);
  c.getZoomFactor(zoom);
  EXPECT_EQ(zoom, 0.5);
  c.setZoomFactor(1.0);
  c.getFieldOfView(fov);
  EXPECT_NEAR(fov, fov0, 1e-6);
  c.zoom(0);
  c.zoom(-1);
  c.zoom(std::nan(""));
  c.getZoomFactor(zoom);
  EXPECT_NEAR(zoom, 1.0, 1e-6);
}

// Turns are about the camera's own axes; the clip planes enclose the scene in front, and a
// scene behind the camera leaves the planes it starts with.
TEST(osgCamera, TurnsAboutItsOwnAxesAndClipsAroundTheSceneInFront) {
  osgCamera c;
  c.rotateY(std::numbers::pi / 2);  // now looking down -x
  c.rotateX(std::numbers::pi / 2);  // then up, about the camera's own x axis
  float m[16];
  c.getViewToWorldMatrix(m);
  EXPECT_NEAR(osg::Matrixd::transform3x3(osg::Vec3d(0, 0, -1), osg::Matrixd(m)).y(), 1.0, 1e-6);

  c.setOrientation(0, 0, 0, 1);
  c.setPosition(0, 0, 1000);
  double n = 0, f = 0;
  c.clipPlanes(osg::BoundingSphere(osg::Vec3(0, 0, 0), 100), n, f);
  EXPECT_LE(n, 900);
  EXPECT_GE(f, 1100);
  EXPECT_GT(n, 0);
  c.clipPlanes(osg::BoundingSphere(osg::Vec3(0, 0, 5000), 100), n, f);
  EXPECT_EQ(n, 0.5);
  EXPECT_EQ(f, 10.0);

  osg::ref_ptr<osg::Camera> camera = new osg::Camera();
  c.applyTo(*camera, osg::BoundingSphere(osg::Vec3(0, 0, 0), 100));
  EXPECT_EQ(camera->getViewMatrix().getTrans(), osg::Vec3d(0, 0, -1000));
}

}  // namespace
}  // namespace quillon
