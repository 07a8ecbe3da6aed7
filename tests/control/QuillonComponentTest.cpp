// The viewer component and the control round it, on stand-ins for its collaborators that record
// what they are asked, and the catalogue of error texts that every component registers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <map>
#include <regex>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "NavigationDoubles.h"
#include "channels/IChannelgroupDecoder.h"
#include "channels/ZrValueDecodingCallbackInterface.h"
#include "control/CQuillonCtrl.h"
#include "control/ComponentParts.h"
#include "control/ErrorCatalogue.h"
#include "control/QuillonComponent.h"
#include "core/ZrErrorHandler.h"
#include "core/ZrErrorMap.h"
#include "scenegraph/ICamera.h"
#include "scenegraph/ISceneGraphImplementor.h"
#include "ui/IViewportManipulator.h"
#include "visualisation/IDocumentParser.h"
#include "visualisation/IMappingRegistrar.h"

namespace quillon {
namespace {

using ::testing::StrictMock;

struct FakeDecoder : IChannelgroupDecoder {
  ErrorCode Register(const std::string& name, std::int32_t group, std::uint32_t channel,
                     ZrValueDecodingCallbackInterface* receiver) override {
    registered.push_back({name, group, channel, receiver});
    return registerResult;
  }
  using S = const std::string&;
  ErrorCode Register1D(S, std::int32_t, std::uint32_t, ZrValueDecodingCallbackInterface1D*) override { return 0; }
  ErrorCode Register3D(S, std::int32_t, std::uint32_t, ZrValueDecodingCallbackInterface3D*) override { return 0; }
  ErrorCode Register6D(S, std::int32_t, std::uint32_t, ZrValueDecodingCallbackInterface6D*) override { return 0; }
  ErrorCode RegisterTime(S, std::int32_t, std::uint32_t, ZrValueDecodingCallbackInterfaceTime*) override { return 0; }
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

using FakeSceneGraph = test::TestHolder;

constexpr char kSep = '\xA7';

struct ComponentTest : ::testing::Test {
  ComponentTest() {
    auto d = std::make_unique<FakeDecoder>();
    auto p = std::make_unique<FakeParser>();
    decoder = d.get();
    parser = p.get();
    parser->deaths = &deaths;
    scene.manipulator = &manipulator;
    component = std::make_unique<QuillonComponent>(ComponentParts{std::move(d), std::move(p), &scene, {}});
    ZrErrorHandler::Instance().Clear();
  }

  FakeDecoder* decoder;
  FakeParser* parser;
  FakeSceneGraph scene;
  StrictMock<MockManipulator> manipulator;
  int deaths = 0;
  std::unique_ptr<QuillonComponent> component;
};

TEST_F(ComponentTest, InitializeViewerReturnsEmptyTextEvenWhenTheDocumentFails) {
  std::string annotated, needed;
  EXPECT_EQ(component->InitializeViewer("<doc/>", annotated, needed), "");
  EXPECT_EQ(annotated, "annotated:<doc/>");
  EXPECT_EQ(needed, "[Arm1, 2]");
  EXPECT_EQ(scene.refreshes, 1);

  parser->result = 1290808;
  EXPECT_EQ(component->InitializeViewer("<bad", annotated, needed), "");
  auto& errors = ZrErrorHandler::Instance();
  ASSERT_EQ(errors.Count(), 2);
  EXPECT_EQ(errors.CodeAt(0), 1290808);
  EXPECT_EQ(errors.CodeAt(1), 1290303);
  EXPECT_EQ(scene.refreshes, 2);
}

TEST_F(ComponentTest, SendChannelsTextEndsWithTheConversionEntry) {
  const unsigned char message[] = {1, 2, 3};
  EXPECT_EQ(component->SendChannels(message, sizeof message), "");
  EXPECT_EQ(scene.refreshes, 1);
  ASSERT_EQ(decoder->decoded.size(), 1u);
  EXPECT_EQ(decoder->decoded[0], std::vector<unsigned char>({1, 2, 3}));

  decoder->decodeResult = 1290100;
  const std::string text = component->SendChannels(message, sizeof message);
  EXPECT_EQ(scene.refreshes, 2);  // redrawn whether or not decoding failed
  EXPECT_EQ(text.rfind("1290100", 0), 0u) << "the decoder's error is the root";
  const std::string tail = std::string(1, kSep) + "1290302" + kSep +
                           "QuillonComponent::ConvertErrorTreeForCOM() Error  \n\t "
                           "(QUILLONCOMPONENT_CONVERTERRORTREEFORCOM)";
  ASSERT_GE(text.size(), tail.size());
  EXPECT_EQ(text.substr(text.size() - tail.size()), tail);
}

TEST_F(ComponentTest, RegisterInDecoderOwnsTheMappingEvenWhenRegistrationFails) {
  decoder->registerResult = 1290102;
  EXPECT_EQ(component->RegisterInDecoder("Arm1", 2, 5, std::make_unique<FakeMapping>(&deaths)), 1290301);
  EXPECT_EQ(component->MappingCount(), 1u);
  EXPECT_EQ(ZrErrorHandler::Instance().CodeAt(ZrErrorHandler::Instance().Count() - 1), 1290301);

  decoder->registerResult = 0;
  EXPECT_EQ(component->RegisterInDecoder("Arm1", 2, 6, std::make_unique<FakeMapping>(&deaths)), 0);
  ASSERT_EQ(decoder->registered.size(), 2u);
  EXPECT_EQ(decoder->registered[1].channel, 6u);
  EXPECT_EQ(component->MappingCount(), 2u);

  // Clearing drops the registrations before the receivers die.
  component->ClearMappings();
  EXPECT_EQ(decoder->clears, 1);
  EXPECT_TRUE(decoder->registered.empty());
  EXPECT_EQ(deaths, 2);
}

TEST_F(ComponentTest, MappingsDieWithTheComponent) {
  parser->mappingsToRegister = 3;
  std::string annotated, needed;
  component->InitializeViewer("<x/>", annotated, needed);
  EXPECT_EQ(component->MappingCount(), 3u);
  component.reset();
  EXPECT_EQ(deaths, 3);
}

// Lengths are metres in the texts and millimetres in the camera; the axis and angle and the zoom
// pass as they are. The first string that does not read stops the rest, and nothing is redrawn.
TEST_F(ComponentTest, CameraTextsConvertLengthsOnlyAndStopAtTheFirstUnreadableOne) {
  using Texts = QuillonComponent::CameraTexts;
  const struct {
    Texts set;
    std::array<double, 11> camera;  // position, axis and angle, near, far, focal distance, zoom
    Texts get;                      // nothing when the texts are refused
  } cases[] = {
      {{"0.0 0.0 0.0", "0.0 1.0 0.0 0.0", "0.1", "10.0", "5.0", "1.0"},
       {0, 0, 0, 0, 1, 0, 0, 100, 10000, 5000, 1},
       {"0.000 0.000 0.000", "0.000 1.000 0.000 0.000", "0.100", "10.000", "5.000", "1.000"}},
      {{"1.5 -2 0.25", "1 0 0 0.5", "0.01", "2", "1.25", "2.5"},
       {1500, -2000, 250, 1, 0, 0, 0.5, 10, 2000, 1250, 2.5},
       {"1.500 -2.000 0.250", "1.000 0.000 0.000 0.500", "0.010", "2.000", "1.250", "2.500"}},
      // Stops at the far distance: the focal distance stays the camera's own 5.
      {{"1 2 3", "0 1 0 1", "0.5", "far", "9", "9"}, {1000, 2000, 3000, 0, 1, 0, 1, 500, 0, 5, 0}, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.set[0]);
    scene.cam = test::TestCamera{};
    scene.refreshes = 0;
    const bool accepted = !c.get[0].empty();
    EXPECT_EQ(component->SetCameraPosition(c.set), accepted);
    for (std::size_t i = 0; i < c.camera.size(); ++i) EXPECT_DOUBLE_EQ(scene.cam.texts()[i], c.camera[i]) << i;
    EXPECT_EQ(scene.refreshes, accepted ? 1 : 0);
    if (!accepted) continue;
    Texts out;
    EXPECT_TRUE(component->GetCameraPosition(out));
    EXPECT_EQ(out, c.get);
  }
  EXPECT_FALSE(component->SetCameraPosition({"1 2", "0 1 0 1", "1", "1", "1", "1"}));
  EXPECT_FALSE(component->SetCameraPosition({"", "", "", "", "", ""}));
}

TEST_F(ComponentTest, HideAndUnhideNodes) {
  scene.switches["Gripper"] = 0;
  EXPECT_FALSE(component->HideNode(""));
  EXPECT_FALSE(component->HideNode("gripper"));  // names are case-sensitive
  EXPECT_EQ(scene.refreshes, 0);
  EXPECT_TRUE(component->HideNode("Gripper"));
  EXPECT_TRUE(component->HideNode("Gripper"));
  EXPECT_EQ(scene.switches["Gripper"], -1);
  EXPECT_TRUE(component->UnhideNode("Gripper"));
  EXPECT_EQ(scene.switches["Gripper"], 0);
  EXPECT_EQ(scene.refreshes, 3);
}

TEST_F(ComponentTest, ColoursGoToTheSceneGraphAndThresholdsToTheDecoder) {
  component->SetBackgroundColour(1, 0, 0, 0, 0, 1);
  EXPECT_EQ(scene.background, (std::vector<float>{1, 0, 0, 0, 0, 1}));
  component->SetForegroundColour(0.5, 0.25, 1.0);
  EXPECT_EQ(scene.foreground, (std::vector<float>{1, 0.5f, 0.25f, 1.0f}));
  component->RemoveForegroundColour();
  EXPECT_EQ(scene.foreground, (std::vector<float>{0, 0, 0, 0}));
  EXPECT_EQ(scene.refreshes, 2);
  component->SetMeaningfulThreshold(50.0f);
  component->SetNominalThreshold(2.5f);
  EXPECT_EQ(decoder->meaningful, 50.0f);
  EXPECT_EQ(decoder->nominal, 2.5f);
}

// The host's mode byte picks the manipulator's mode; bytes past the three modes change nothing.
TEST_F(ComponentTest, NavigationSettingsGoToTheManipulator) {
  ::testing::InSequence order;
  EXPECT_CALL(manipulator, SetMode(IViewportManipulator::MODE_ZOOM));
  EXPECT_CALL(manipulator, SetMode(IViewportManipulator::MODE_PAN));
  EXPECT_CALL(manipulator, SetMode(IViewportManipulator::MODE_ROTATE));
  EXPECT_CALL(manipulator, SetContextMenuEnabled(false));
  EXPECT_CALL(manipulator, SetContextMenuEnabled(true));
  EXPECT_CALL(manipulator, SetNavigationControlsShown(false));
  EXPECT_CALL(manipulator, SetNavigationControlsShown(true));
  EXPECT_CALL(manipulator, SetMouseNavigationEnabled(false));
  EXPECT_CALL(manipulator, SetMouseNavigationEnabled(true));
  EXPECT_CALL(manipulator, ViewAll());
  for (unsigned char mode : {0, 1, 2, 3, 255}) component->SetViewportManipulationMode(mode);
  component->DisableContextMenu();
  component->EnableContextMenu();
  component->DisableNavigationControls();
  component->EnableNavigationControls();
  component->DisableMouseNavigation();
  component->EnableMouseNavigation();
  component->ViewAll();

  scene.manipulator = nullptr;  // without navigation, view all fits the camera itself
  component->ViewAll();
  const test::TestCamera& cam = scene.cam;
  EXPECT_EQ((std::array<double, 4>{cam.sphereCentre.x, cam.sphereCentre.y, cam.sphereCentre.z, cam.sphereRadius}),
            (std::array<double, 4>{1, 2, 3, 4}));
}

TEST(QuillonComponentAlone, WorksWithoutAnyCollaborator) {
  QuillonComponent component{ComponentParts{}};
  std::string annotated, needed;
  EXPECT_EQ(component.InitializeViewer("<x/>", annotated, needed), "");
  EXPECT_EQ(component.SendChannels(nullptr, 0), "");
  EXPECT_FALSE(component.HideNode("a"));
  EXPECT_NE(component.CreateViewerWindow(0, 10, 10), 0);
  unsigned char pixel[4];
  EXPECT_NE(component.RenderRgba(pixel, sizeof pixel), 0);
  QuillonComponent::CameraTexts texts;
  EXPECT_TRUE(component.GetCameraPosition(texts));
  component.SetViewportManipulationMode(1);
  component.ViewAll();
}

struct ControlTest : ::testing::Test {
  ControlTest() {
    auto d = std::make_unique<FakeDecoder>();
    decoder = d.get();
    control = std::make_unique<CQuillonCtrl>(ComponentParts{std::move(d), std::make_unique<FakeParser>(), &scene, {}});
  }
  std::string text(QuillonBytes bytes) {
    std::string s(reinterpret_cast<char*>(bytes.data), bytes.size);
    std::free(bytes.data);
    return s;
  }

  FakeDecoder* decoder;
  FakeSceneGraph scene;
  std::unique_ptr<CQuillonCtrl> control;
};

// The buffer grows but never shrinks; without bytes the previous message is decoded again.
TEST_F(ControlTest, ChannelBufferGrowsAndKeepsTheLastMessage) {
  control->SendChannels_v1(nullptr, 0);  // at first the buffer holds 100 zero bytes
  EXPECT_EQ(decoder->decoded.back(), std::vector<unsigned char>(100, 0));
  EXPECT_EQ(control->channelBufferSize(), 100u);
  std::vector<unsigned char> big(150, 7), small(20, 9);

  EXPECT_EQ(text(control->SendChannels_v1(big.data(), 150)), "");
  EXPECT_EQ(control->channelBufferSize(), 150u);
  EXPECT_EQ(decoder->decoded.back(), big);

  EXPECT_EQ(text(control->SendChannels_v1(small.data(), 20)), "");
  EXPECT_EQ(control->channelBufferSize(), 150u);
  EXPECT_EQ(decoder->decoded.back(), small);

  std::vector<unsigned char> message{1, 2, 3, 4};
  control->SendChannels_v1(message.data(), 4);
  control->SendChannels_v1(nullptr, 300);  // grows, copies nothing
  EXPECT_EQ(control->channelBufferSize(), 300u);
  EXPECT_EQ(decoder->decoded.back(), message);
  control->SendChannels_v1(message.data(), 0);  // an empty array copies nothing either
  EXPECT_EQ(decoder->decoded.back(), message);
}

TEST_F(ControlTest, AbsurdCountsAreRefusedWithAnError) {
  for (long count : {-1L, -100000L, CQuillonCtrl::kMaxMessageBytes + 1, 1L << 30}) {
    const std::string result = text(control->SendChannels_v1(nullptr, count));
    EXPECT_EQ(result.rfind("1290304\xA7", 0), 0u) << count;
    EXPECT_NE(result.find("\xA7"
                          "1290302\xA7"),
              std::string::npos)
        << count;
  }
  EXPECT_EQ(control->channelBufferSize(), 100u);
  EXPECT_TRUE(decoder->decoded.empty());
}

TEST_F(ControlTest, InitializeViewerWritesBothOutputsBack) {
  char xml[] = "<Visualisation/>";
  char* document = xml;
  char old[] = "old";
  char* annotated = old;
  char* needed = nullptr;
  QuillonBytes result = control->InitializeViewer_v1(&document, &annotated, &needed);
  EXPECT_EQ(result.data, nullptr);
  EXPECT_EQ(result.size, 0u);
  ASSERT_NE(annotated, old);
  EXPECT_STREQ(annotated, "annotated:<Visualisation/>");
  EXPECT_STREQ(needed, "[Arm1, 2]");
  std::free(annotated);
  std::free(needed);

  // Null arguments are empty strings, and nothing is written through a null pointer.
  result = control->InitializeViewer_v1(nullptr, nullptr, nullptr);
  EXPECT_EQ(result.data, nullptr);
}

TEST_F(ControlTest, SetCameraPositionFillsInAndWritesBackTheDefaults) {
  char* position = nullptr;
  char* texts[6] = {};
  char near[] = "0.2";
  texts[2] = near;
  char** args[6] = {&position, &texts[1], &texts[2], &texts[3], &texts[4], nullptr};
  EXPECT_EQ(control->SetCameraPosition_v1(args), 1);
  EXPECT_STREQ(position, "0.0 0.0 0.0");
  EXPECT_STREQ(texts[1], "0.0 1.0 0.0 0.0");
  EXPECT_STREQ(texts[2], "0.2");
  EXPECT_STREQ(texts[3], "10.0");
  EXPECT_STREQ(texts[4], "5.0");
  EXPECT_DOUBLE_EQ(scene.cam.nearDistance, 200.0);
  EXPECT_DOUBLE_EQ(scene.cam.zoomFactor, 1.0);
  std::free(position);
  for (int i : {1, 2, 3, 4}) std::free(texts[i]);
}

// A component made of no parts at all still reports the codes of every layer with their texts:
// it registers the catalogue itself. Every message ends with its symbolic name in parentheses,
// and no code is registered twice.
TEST(ErrorCatalogue, AComponentKnowsEveryLayersCodesWordForWord) {
  QuillonComponent component{ComponentParts{}};
  EXPECT_EQ(ZrErrorMap::GetMessage(1290302),
            "QuillonComponent::ConvertErrorTreeForCOM() Error  \n\t (QUILLONCOMPONENT_CONVERTERRORTREEFORCOM)");
  const std::regex name(R"(\([A-Z0-9_]+\)$)");
  std::size_t total = 0;
  for (auto table : ErrorCatalogue()) {
    for (const ErrorDefinition& e : table) {
      ++total;
      EXPECT_TRUE(std::regex_search(std::string(e.message), name)) << e.code << ": " << e.message;
      EXPECT_EQ(ZrErrorMap::GetMessage(e.code), e.message) << e.code;
    }
  }
  EXPECT_EQ(ZrErrorMap::Size(), total);
  RegisterErrorCatalogue();
  EXPECT_EQ(ZrErrorMap::Size(), total);
}

}  // namespace
}  // namespace quillon
