#pragma once
// A camera, viewport and keyboard of the tests' own, for driving the manipulator without a window.

#include <memory>
#include <string>
#include <vector>

#include "scenegraph/ICamera.h"
#include "scenegraph/IRenderArea.h"
#include "scenegraph/ISceneGraphImplementor.h"
#include "ui/IKeyState.h"
#include "ui/IViewport.h"
#include "ui/NavigationMath.h"

namespace quillon::test {

/// Keeps position and orientation like a real camera, and records the zooms and turns.
class TestCamera final : public ICamera {
 public:
  nav::Vec3 position{0, 0, 100};
  nav::Quat orientation;
  double fieldOfView = 0.785398;
  double focalDistance = 5.0;
  std::vector<double> zooms;
  std::vector<double> turnsX, turnsY, turnsZ;
  nav::Vec3 sphereCentre;
  double sphereRadius = -1;

  void setPosition(double x, double y, double z) override { position = {x, y, z}; }
  void setOrientation(double x, double y, double z, double w) override { orientation = {x, y, z, w}; }
  void setOrientationAxisAngle(double, double, double, double) override {}
  void setNearDistance(double) override {}
  void setFarDistance(double) override {}
  void setFocalDistance(double d) override { focalDistance = d; }
  void setFieldOfView(double angle) override { fieldOfView = angle; }
  void getPosition(double& x, double& y, double& z) const override {
    x = position.x;
    y = position.y;
    z = position.z;
  }
  void getOrientation(double& x, double& y, double& z, double& w) const override {
    x = orientation.x;
    y = orientation.y;
    z = orientation.z;
    w = orientation.w;
  }
  void getOrientationAxisAngle(double&, double&, double&, double&) const override {}
  void getNearDistance(double&) const override {}
  void getFarDistance(double&) const override {}
  void getFocalDistance(double& d) const override { d = focalDistance; }
  void getFieldOfView(double& angle) const override { angle = fieldOfView; }
  void getViewToWorldMatrix(float[16]) const override {}
  void zoom(double factor) override { zooms.push_back(factor); }
  void zoomToSphere(double x, double y, double z, double radius) override {
    sphereCentre = {x, y, z};
    sphereRadius = radius;
  }
  void rotateX(double angle) override { turn(turnsX, {1, 0, 0}, angle); }
  void rotateY(double angle) override { turn(turnsY, {0, 1, 0}, angle); }
  void rotateZ(double angle) override { turn(turnsZ, {0, 0, 1}, angle); }
  void setAspectRatio(double) override {}
  void getZoomFactor(double&) const override {}
  void setZoomFactor(double) override {}

  nav::Vec3 viewDirection() const { return nav::rotate(orientation, {0, 0, -1}); }
  nav::Vec3 up() const { return nav::rotate(orientation, {0, 1, 0}); }

 private:
  void turn(std::vector<double>& log, nav::Vec3 axis, double angle) {
    log.push_back(angle);
    orientation = orientation * nav::axisAngle(axis, angle);
  }
};

/// A 640 × 480 window whose unprojection is linear and easy to follow: a pixel is 0.01 scene
/// units, y grows downwards on the screen and upwards in the world, and z is minus the depth.
class TestViewport final : public IViewport {
 public:
  TestCamera cam;
  int width = 640;
  int height = 480;
  double focal = -5.0;
  mutable std::vector<int> depths;
  int redraws = 0;
  float sphere[4] = {0, 0, 0, 0};

  ICamera& camera() override { return cam; }
  void getWindowSize(int& w, int& h) const override {
    w = width;
    h = height;
  }
  void unproject(int x, int y, int depth, double& wx, double& wy, double& wz) const override {
    depths.push_back(depth);
    wx = x * 0.01;
    wy = -y * 0.01;
    wz = -depth;
  }
  double focalPlane() const override { return focal; }
  void sceneBoundingSphere(float& x, float& y, float& z, float& radius) override {
    x = sphere[0];
    y = sphere[1];
    z = sphere[2];
    radius = sphere[3];
  }
  void fitToSphere(double x, double y, double z, double radius) override { cam.zoomToSphere(x, y, z, radius); }
  void redraw() override { ++redraws; }
};

/// 200 × 100 pointer pixels, drawn with `scale` framebuffer pixels to each.
class TestArea final : public IRenderArea {
 public:
  int scale = 1;
  int width() const override { return 200 * scale; }
  int height() const override { return 100 * scale; }
  int logicalWidth() const override { return 200; }
  int logicalHeight() const override { return 100; }
  void resize(int, int) override {}
  bool makeCurrent() override { return false; }
  void present() override {}
  void triggerRedraw() override {}
  bool readPixels(unsigned char*, std::size_t) override { return false; }
  osgViewer::GraphicsWindowEmbedded* graphicsWindow() override { return nullptr; }
};

/// A scene-graph holder with a test camera, a 200 × 100 area (or a window's, when one is
/// given), and a manipulator to hand out.
class TestHolder final : public ISceneGraphImplementor {
 public:
  TestCamera cam;
  TestArea area;
  IRenderArea* windowArea = nullptr;
  bool attached = true;
  int refreshes = 0;
  int renders = 0;

  void initialize() override {}
  void terminate() override {}
  ICamera& camera() override { return cam; }
  ISGBuilder* sceneGraphBuilder() override { return nullptr; }
  ISceneMappingBuilder* sceneMappingBuilder() override { return nullptr; }
  IViewportManipulator* manipulator = nullptr;
  IViewportManipulator* viewportManipulator() override { return manipulator; }
  void attachToWindow(std::unique_ptr<IRenderArea>) override {}
  void detachFromWindow() override {}
  void setBackgroundColours(float, float, float, float, float, float) override {}
  void clearRegistries() override {}
  void refresh(int) override { ++refreshes; }
  void render() override { ++renders; }
  void boundingSphere(float& x, float& y, float& z, float& radius) override {
    x = 1;
    y = 2;
    z = 3;
    radius = 4;
  }
  IRenderArea* renderArea() override {
    if (!attached) return nullptr;
    return windowArea ? windowArea : &area;
  }
  bool setSwitchChoice(const std::string&, int) override { return false; }
  void setForegroundOverride(bool, float, float, float) override {}
};

class TestKeys final : public IKeyState {
 public:
  bool alt = false;
  bool ctrl = false;
  bool isAltDown() const override { return alt; }
  bool isCtrlDown() const override { return ctrl; }
};

}  // namespace quillon::test
