#pragma once
// Stand-ins for the component's collaborators that record what they are asked.

#include <gmock/gmock.h>

#include <map>
#include <string>
#include <vector>

#include "channels/IChannelgroupDecoder.h"
#include "channels/ZrValueDecodingCallbackInterface.h"
#include "control/ComponentParts.h"
#include "core/ZrErrorHandler.h"
#include "scenegraph/ICamera.h"
#include "scenegraph/ISceneGraphImplementor.h"
#include "ui/IViewportManipulator.h"
#include "visualisation/IDocumentParser.h"
#include "visualisation/IMappingRegistrar.h"

namespace quillon::testing {

struct FakeDecoder : IChannelgroupDecoder {
  ErrorCode Register(const std::string& name, std::int32_t group, std::uint32_t channel,
                     ZrValueDecodingCallbackInterface* receiver) override {
    registered.push_back({name, group, channel, receiver});
    return registerResult;
  }
  ErrorCode Register1D(const std::string&, std::int32_t, std::uint32_t, ZrValueDecodingCallbackInterface1D*) override {
    return 0;
  }
  ErrorCode Register3D(const std::string&, std::int32_t, std::uint32_t, ZrValueDecodingCallbackInterface3D*) override {
    return 0;
  }
  ErrorCode Register6D(const std::string&, std::int32_t, std::uint32_t, ZrValueDecodingCallbackInterface6D*) override {
    return 0;
  }
  ErrorCode RegisterTime(const std::string&, std::int32_t, std::uint32_t,
                         ZrValueDecodingCallbackInterfaceTime*) override {
    return 0;
  }
  ErrorCode DecodeChannelgroup(const unsigned char* bytes, std::size_t size) override {
    decoded.emplace_back(bytes, bytes + size);
    if (decodeResult != 0) RaiseRootError(decodeResult);
    return decodeResult;
  }
  void SetMeaningfulThreshold(float t) override { meaningful = t; }
  void SetNominalThreshold(float t) override { nominal = t; }
  void Clear() override {
    ++clears;
    registered.clear();
  }

  struct Registration {
    std::string name;
    std::int32_t group;
    std::uint32_t channel;
    ZrValueDecodingCallbackInterface* receiver;
  };
  std::vector<Registration> registered;
  std::vector<std::vector<unsigned char>> decoded;
  ErrorCode registerResult = 0;
  ErrorCode decodeResult = 0;
  float meaningful = -1, nominal = -1;
  int clears = 0;
};

/// A receiver that counts its own destruction.
struct FakeMapping : ZrValueDecodingCallbackInterface {
  explicit FakeMapping(int* counter) : deaths(counter) {}
  ~FakeMapping() override { ++*deaths; }
  ErrorCode AttachToDecoder(const std::string&, std::int32_t, std::uint32_t, IChannelgroupDecoder*) override {
    return 0;
  }
  int* deaths;
};

struct FakeParser : IDocumentParser {
  ErrorCode Parse(IMappingRegistrar& registrar, const std::string& xml, std::string* annotated,
                  std::string* needed) override {
    seen = xml;
    if (annotated) *annotated = "annotated:" + xml;
    if (needed) *needed = "[Arm1, 2]";
    for (int i = 0; i < mappingsToRegister; ++i)
      registrar.RegisterInDecoder("Arm1", 2, static_cast<std::uint32_t>(i), std::make_unique<FakeMapping>(deaths));
    if (result != 0) RaiseRootError(result);
    return result;
  }
  std::string seen;
  ErrorCode result = 0;
  int mappingsToRegister = 0;
  int* deaths = nullptr;
};

/// A camera that keeps what it is given, as the real one would.
struct RecordingCamera : ICamera {
  void setPosition(double x, double y, double z) override { position = {x, y, z}; }
  void setOrientation(double x, double y, double z, double w) override { orientation = {x, y, z, w}; }
  void setOrientationAxisAngle(double x, double y, double z, double a) override { axisAngle = {x, y, z, a}; }
  void setNearDistance(double d) override { nearDistance = d; }
  void setFarDistance(double d) override { farDistance = d; }
  void setFocalDistance(double d) override { focalDistance = d; }
  void setFieldOfView(double) override {}
  void getPosition(double& x, double& y, double& z) const override {
    x = position[0];
    y = position[1];
    z = position[2];
  }
  void getOrientation(double&, double&, double&, double&) const override {}
  void getOrientationAxisAngle(double& x, double& y, double& z, double& a) const override {
    x = axisAngle[0];
    y = axisAngle[1];
    z = axisAngle[2];
    a = axisAngle[3];
  }
  void getNearDistance(double& d) const override { d = nearDistance; }
  void getFarDistance(double& d) const override { d = farDistance; }
  void getFocalDistance(double& d) const override { d = focalDistance; }
  void getFieldOfView(double&) const override {}
  void getViewToWorldMatrix(float[16]) const override {}
  void zoom(double) override {}
  void zoomToSphere(double x, double y, double z, double r) override { sphere = {x, y, z, r}; }
  void rotateX(double) override {}
  void rotateY(double) override {}
  void rotateZ(double) override {}
  void setAspectRatio(double) override {}
  void getZoomFactor(double& f) const override { f = zoomFactor; }
  void setZoomFactor(double f) override { zoomFactor = f; }

  std::vector<double> position{0, 0, 0}, orientation{0, 0, 0, 1}, axisAngle{0, 0, 0, 0}, sphere;
  double nearDistance = 0, farDistance = 0, focalDistance = 0, zoomFactor = 0;
};

struct MockManipulator : IViewportManipulator {
  MOCK_METHOD(void, FirstButtonDown, (int, int), (override));
  MOCK_METHOD(void, FirstButtonUp, (int, int), (override));
  MOCK_METHOD(void, SecondButtonDown, (int, int), (override));
  MOCK_METHOD(void, SecondButtonUp, (int, int), (override));
  MOCK_METHOD(int, ShowContextMenu, (const MenuPresenter&, int, int), (override));
  MOCK_METHOD(void, MouseWheel, (int, int, int), (override));
  MOCK_METHOD(void, MouseMove, (int, int), (override));
  MOCK_METHOD(void, KeyDown, (unsigned int), (override));
  MOCK_METHOD(void, KeyUp, (unsigned int), (override));
  MOCK_METHOD(void, SetMode, (int), (override));
  MOCK_METHOD(int, GetModeInfo, (), (const, override));
  MOCK_METHOD(void, RotateX, (double), (override));
  MOCK_METHOD(void, RotateY, (double), (override));
  MOCK_METHOD(void, Dolly, (double), (override));
  MOCK_METHOD(void, ViewAll, (), (override));
  MOCK_METHOD(void, Apply, (), (override));
  MOCK_METHOD(void, SetContextMenuEnabled, (bool), (override));
  MOCK_METHOD(bool, IsContextMenuEnabled, (), (const, override));
  MOCK_METHOD(void, SetMouseNavigationEnabled, (bool), (override));
  MOCK_METHOD(bool, IsMouseNavigationEnabled, (), (const, override));
  MOCK_METHOD(void, SetNavigationControlsShown, (bool), (override));
  MOCK_METHOD(bool, AreNavigationControlsShown, (), (const, override));
  MOCK_METHOD(void, SetViewport, (IViewport*), (override));
  MOCK_METHOD(void, SetHolder, (IViewportHolder*), (override));
  MOCK_METHOD(void, SetKeyState, (const IKeyState*), (override));
};

struct FakeSceneGraph : ISceneGraphImplementor {
  void initialize() override {}
  void terminate() override {}
  ICamera& camera() override { return cam; }
  ISGBuilder* sceneGraphBuilder() override { return nullptr; }
  ISceneMappingBuilder* sceneMappingBuilder() override { return nullptr; }
  IViewportManipulator* viewportManipulator() override { return manipulator; }
  void attachToWindow(std::unique_ptr<IRenderArea>) override {}
  void detachFromWindow() override {}
  void setBackgroundColours(float r1, float g1, float b1, float r2, float g2, float b2) override {
    background = {r1, g1, b1, r2, g2, b2};
  }
  void clearRegistries() override {}
  void refresh(int) override { ++refreshes; }
  void render() override {}
  void boundingSphere(float& x, float& y, float& z, float& r) override {
    x = 1;
    y = 2;
    z = 3;
    r = 4;
  }
  IRenderArea* renderArea() override { return nullptr; }
  bool setSwitchChoice(const std::string& name, int choice) override {
    auto it = switches.find(name);
    if (it == switches.end()) return false;
    it->second = choice;
    return true;
  }
  void setForegroundOverride(bool on, float r, float g, float b) override { foreground = {on ? 1.f : 0.f, r, g, b}; }

  RecordingCamera cam;
  IViewportManipulator* manipulator = nullptr;
  std::vector<float> background, foreground;
  std::map<std::string, int> switches;
  int refreshes = 0;
};

}  // namespace quillon::testing
