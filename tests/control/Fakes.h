#pragma once
// Stand-ins for the component's collaborators that record what they are asked.

#include <gmock/gmock.h>

#include <string>
#include <string_view>
#include <vector>

#include "NavigationDoubles.h"
#include "channels/IChannelgroupDecoder.h"
#include "channels/ZrValueDecodingCallbackInterface.h"
#include "control/ComponentParts.h"
#include "core/ZrErrorHandler.h"
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
  ErrorCode Parse(IMappingRegistrar& registrar, std::string_view xml, std::string* annotated,
                  std::string* needed) override {
    seen = xml;
    if (annotated) *annotated = "annotated:" + std::string(xml);
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

/// The window tests' holder and camera, which keep what they are given.
using FakeSceneGraph = test::TestHolder;

}  // namespace quillon::testing
