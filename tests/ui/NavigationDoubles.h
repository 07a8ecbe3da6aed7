#pragma once
// A camera, viewport, scene-graph holder and keyboard of the tests' own, for driving the
// manipulator and the viewer component without a window.

#include <array>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "core/Trace.h"
#include "scenegraph/ICamera.h"
#include "scenegraph/IRenderArea.h"
#include "scenegraph/ISceneGraphImplementor.h"
#include "ui/IKeyState.h"
#include "ui/IViewport.h"
#include "ui/NavigationMath.h"
#include "ui/cViewportManipulator.h"

namespace quillon::test {

/// Keeps what it is given like a real camera, and records the zooms, turns and fits.
class TestCamera final : public ICamera {
 public:
  nav::Vec3 position{0, 0, 100};
  nav::Quat orientation;
  std::array<double, 4> axisAngle{};  // as set, apart from the orientation
  double nearDistance = 0, farDistance = 0, zoomFactor = 0;
  double fieldOfView = 0.785398;
  double focalDistance = 5.0;
  std::vector<double> zooms;
  std::vector<double> turnsX, turnsY, turnsZ;
  nav::Vec3 sphereCentre;
  double sphereRadius = -1;

  void setPosition(double x, double y, double z) override { position = {x, y, z}; }
  void setOrientation(double x, double y, double z, double w) override { orientation = {x, y, z, w}; }
  void setOrientationAxisAngle(double x, double y, double z, double a) override { axisAngle = {x, y, z, a}; }
  void setNearDistance(double d) override { nearDistance = d; }
  void setFarDistance(double d) override { farDistance = d; }
  void setFocalDistance(double d) override { focalDistance = d; }
  void setFieldOfView(double angle) override { fieldOfView = angle; }
  void getPosition(double& x, double& y, double& z) const override {
    std::tie(x, y, z) = std::tie(position.x, position.y, position.z);
  }
  void getOrientation(double& x, double& y, double& z, double& w) const override {
    std::tie(x, y, z, w) = std::tie(orientation.x, orientation.y, orientation.z, orientation.w);
  }
  void getOrientationAxisAngle(double& x, double& y, double& z, double& a) const override {
    std::tie(x, y, z, a) = std::tie(axisAngle[0], axisAngle[1], axisAngle[2], axisAngle[3]);
  }
  void getNearDistance(double& d) const override { d = nearDistance; }
  void getFarDistance(double& d) const override { d = farDistance; }
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
  void getZoomFactor(double& f) const override { f = zoomFactor; }
  void setZoomFactor(double f) override { zoomFactor = f; }

  nav::Vec3 viewDirection() const { return nav::rotate(orientation, {0, 0, -1}); }
  /// What the camera texts set, in their order: position, axis and angle, near, far and focal
  /// distance, zoom.
  std::array<double, 11> texts() const {
    return {position.x,   position.y,   position.z,  axisAngle[0],  axisAngle[1], axisAngle[2],
            axisAngle[3], nearDistance, farDistance, focalDistance, zoomFactor};
  }

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
  void getWindowSize(int& w, int& h) const override { std::tie(w, h) = std::tie(width, height); }
  void unproject(int x, int y, int depth, double& wx, double& wy, double& wz) const override {
    depths.push_back(depth);
    std::tie(wx, wy, wz) = std::tuple(x * 0.01, -y * 0.01, -depth);
  }
  double focalPlane() const override { return focal; }
  void sceneBoundingSphere(float& x, float& y, float& z, float& radius) override {
    std::tie(x, y, z, radius) = std::tie(sphere[0], sphere[1], sphere[2], sphere[3]);
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
/// given), and a manipulator to hand out; it counts the refreshes and renders, and keeps the
/// colours and switch choices it is given.
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
  void setBackgroundColours(float r1, float g1, float b1, float r2, float g2, float b2) override {
    background = {r1, g1, b1, r2, g2, b2};
  }
  void clearRegistries() override {}
  void refresh(int) override { ++refreshes; }
  void render() override { ++renders; }
  void boundingSphere(float& x, float& y, float& z, float& radius) override {
    std::tie(x, y, z, radius) = std::tuple(1.f, 2.f, 3.f, 4.f);
  }
  IRenderArea* renderArea() override {
    if (!attached) return nullptr;
    return windowArea ? windowArea : &area;
  }
  bool setSwitchChoice(const std::string& name, int choice) override {
    const auto it = switches.find(name);
    if (it != switches.end()) it->second = choice;
    return it != switches.end();
  }
  void setForegroundOverride(bool on, float r, float g, float b) override { foreground = {on ? 1.f : 0.f, r, g, b}; }

  std::vector<float> background, foreground;
  std::map<std::string, int> switches;  // the nodes that can be hidden, with their choice
};

/// Collects the trace lines while it lives.
struct Trace {
  std::vector<std::string> lines;
  TraceSink previous = SetTraceSink([this](std::string_view line) { lines.emplace_back(line); });
  ~Trace() { SetTraceSink(previous); }
};

class TestKeys final : public IKeyState {
 public:
  bool alt = false;
  bool ctrl = false;
  bool isAltDown() const override { return alt; }
  bool isCtrlDown() const override { return ctrl; }
};

/// The mode objects live for the process: puts every one back to rest before a test starts, and
/// the manipulator in rotate mode.
inline void resetModes(cViewportManipulator& manipulator) {
  for (int i = 0; i < IViewportManipulator::MODE_NONE; ++i) {
    manipulator.SetMode(i);
    manipulator.FirstButtonUp(0, 0);
  }
  manipulator.SetMode(IViewportManipulator::MODE_ROTATE);
}

}  // namespace quillon::test
