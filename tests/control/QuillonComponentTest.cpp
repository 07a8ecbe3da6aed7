#include <gtest/gtest.h>

#include "Fakes.h"
#include "control/QuillonComponent.h"
#include "core/ZrErrorHandler.h"

namespace quillon {
namespace {

using namespace quillon::testing;
using ::testing::StrictMock;

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

TEST(QuillonComponentStatic, VersionsAndMinimalSize) {
  const std::pair<long, bool> versions[] = {{0, false}, {1, true}, {2, true}, {3, true}, {4, false}, {-1, false}};
  for (auto [version, supported] : versions) EXPECT_EQ(QuillonComponent::SupportsVersion(version), supported);
  EXPECT_EQ(QuillonComponent::GetMinimalWindowWidth(), 463);
  EXPECT_EQ(QuillonComponent::GetMinimalWindowHeight(), 480);
}

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

TEST_F(ComponentTest, CameraTextRoundTripWithTheDefaults) {
  const QuillonComponent::CameraTexts defaults{"0.0 0.0 0.0", "0.0 1.0 0.0 0.0", "0.1", "10.0", "5.0", "1.0"};
  EXPECT_TRUE(component->SetCameraPosition(defaults));
  EXPECT_EQ(scene.cam.position, (std::vector<double>{0, 0, 0}));
  EXPECT_EQ(scene.cam.axisAngle, (std::vector<double>{0, 1, 0, 0}));
  EXPECT_DOUBLE_EQ(scene.cam.nearDistance, 100.0);
  EXPECT_DOUBLE_EQ(scene.cam.farDistance, 10000.0);
  EXPECT_DOUBLE_EQ(scene.cam.focalDistance, 5000.0);
  EXPECT_DOUBLE_EQ(scene.cam.zoomFactor, 1.0);
  EXPECT_EQ(scene.refreshes, 1);

  QuillonComponent::CameraTexts out;
  EXPECT_TRUE(component->GetCameraPosition(out));
  EXPECT_EQ(out, (QuillonComponent::CameraTexts{"0.000 0.000 0.000", "0.000 1.000 0.000 0.000", "0.100", "10.000",
                                                "5.000", "1.000"}));
}

TEST_F(ComponentTest, CameraTextScalesLengthsOnly) {
  EXPECT_TRUE(component->SetCameraPosition({"1.5 -2 0.25", "1 0 0 0.5", "0.01", "2", "1.25", "2.5"}));
  EXPECT_EQ(scene.cam.position, (std::vector<double>{1500, -2000, 250}));
  EXPECT_EQ(scene.cam.axisAngle, (std::vector<double>{1, 0, 0, 0.5}));
  EXPECT_DOUBLE_EQ(scene.cam.zoomFactor, 2.5);
  QuillonComponent::CameraTexts out;
  EXPECT_TRUE(component->GetCameraPosition(out));
  EXPECT_EQ(out[0], "1.500 -2.000 0.250");
  EXPECT_EQ(out[2], "0.010");
  EXPECT_EQ(out[5], "2.500");
}

TEST_F(ComponentTest, CameraTextStopsAtTheFirstUnreadableString) {
  EXPECT_FALSE(component->SetCameraPosition({"1 2 3", "0 1 0 1", "0.5", "far", "9", "9"}));
  EXPECT_EQ(scene.cam.position, (std::vector<double>{1000, 2000, 3000}));
  EXPECT_DOUBLE_EQ(scene.cam.nearDistance, 500.0);
  EXPECT_DOUBLE_EQ(scene.cam.farDistance, 0.0);
  EXPECT_DOUBLE_EQ(scene.cam.focalDistance, 0.0);
  EXPECT_EQ(scene.refreshes, 0);

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

TEST_F(ComponentTest, ColoursGoToTheSceneGraph) {
  component->SetBackgroundColour(1, 0, 0, 0, 0, 1);
  EXPECT_EQ(scene.background, (std::vector<float>{1, 0, 0, 0, 0, 1}));
  component->SetForegroundColour(0.5, 0.25, 1.0);
  EXPECT_EQ(scene.foreground, (std::vector<float>{1, 0.5f, 0.25f, 1.0f}));
  component->RemoveForegroundColour();
  EXPECT_EQ(scene.foreground, (std::vector<float>{0, 0, 0, 0}));
  EXPECT_EQ(scene.refreshes, 2);
}

TEST_F(ComponentTest, ThresholdsReachTheDecoder) {
  component->SetMeaningfulThreshold(50.0f);
  component->SetNominalThreshold(2.5f);
  EXPECT_EQ(decoder->meaningful, 50.0f);
  EXPECT_EQ(decoder->nominal, 2.5f);
}

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
}

TEST_F(ComponentTest, ViewAllWithoutNavigationFitsTheCamera) {
  scene.manipulator = nullptr;
  component->ViewAll();
  EXPECT_EQ(scene.cam.sphere, (std::vector<double>{1, 2, 3, 4}));
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

}  // namespace
}  // namespace quillon
