#include "control/QuillonComponent.h"

#include <cstdio>

#include "channels/ZrValueDecodingCallbackInterface.h"
#include "control/ComponentErrorCodes.h"
#include "control/ErrorCatalogue.h"
#include "core/CoreErrorCodes.h"
#include "core/ZrErrorHandler.h"
#include "scenegraph/osgFakeCamera.h"
#include "ui/IViewportManipulator.h"

namespace quillon {
namespace {

// The host's length unit is 1000 scene units.
constexpr double kToHost = 0.001;
constexpr double kToScene = 1000.0;

// Keeps what snprintf wrote; false when it failed or the text did not fit.
bool keep(std::string& out, const char* buffer, int n, std::size_t capacity) {
  if (n < 0 || static_cast<std::size_t>(n) >= capacity) return false;
  out.assign(buffer, static_cast<std::size_t>(n));
  return true;
}

bool format3(std::string& out, double a, double b, double c) {
  char buffer[512];
  return keep(out, buffer, std::snprintf(buffer, sizeof buffer, "%.3lf %.3lf %.3lf", a, b, c), sizeof buffer);
}

bool format4(std::string& out, double a, double b, double c, double d) {
  char buffer[512];
  return keep(out, buffer, std::snprintf(buffer, sizeof buffer, "%.3lf %.3lf %.3lf %.3lf", a, b, c, d), sizeof buffer);
}

bool format1(std::string& out, double a) {
  char buffer[512];
  return keep(out, buffer, std::snprintf(buffer, sizeof buffer, "%.3lf", a), sizeof buffer);
}

}  // namespace

QuillonComponent::QuillonComponent(ComponentParts parts)
    : decoder(std::move(parts.decoder)),
      parser(std::move(parts.parser)),
      sceneGraph(parts.sceneGraph),
      makeRenderArea(std::move(parts.makeRenderArea)) {
  // Whatever its parts, a component reports every layer's codes with their texts.
  RegisterErrorCatalogue();
}

QuillonComponent::~QuillonComponent() {
  ClearMappings();
  decoder.reset();
  parser.reset();
}

int QuillonComponent::CreateViewerWindow(unsigned long parent, int width, int height) {
  if (!sceneGraph || !makeRenderArea) return 1;
  std::unique_ptr<IRenderArea> area = makeRenderArea(parent, width, height);
  if (!area) return 1;
  sceneGraph->attachToWindow(std::move(area));
  return sceneGraph->renderArea() ? 0 : 1;
}

void QuillonComponent::DestroyViewerWindow() {
  if (sceneGraph) sceneGraph->detachFromWindow();
}

void QuillonComponent::Resize(int width, int height) {
  if (!sceneGraph || !sceneGraph->renderArea()) return;
  sceneGraph->renderArea()->resize(width, height);
  Redraw();
}

IRenderArea* QuillonComponent::RenderArea() const { return sceneGraph ? sceneGraph->renderArea() : nullptr; }

int QuillonComponent::RenderRgba(unsigned char* pixels, std::size_t size) {
  IRenderArea* area = sceneGraph ? sceneGraph->renderArea() : nullptr;
  if (!area || !pixels) return 1;
  const auto needed = static_cast<std::size_t>(area->width()) * static_cast<std::size_t>(area->height()) * 4;
  if (size < needed) return 1;
  sceneGraph->render();
  return area->readPixels(pixels, size) ? 0 : 1;
}

std::string QuillonComponent::InitializeViewer(std::string_view xmlDescription, std::string& xmlDescriptionAnnotated,
                                               std::string& neededChannelGroups) {
  LoadDocument(xmlDescription, xmlDescriptionAnnotated, neededChannelGroups);
  // By design the result is empty even for a failed document; the host learns of the
  // failure from the two outputs, and the error list keeps the reason.
  return ConvertErrorTreeForCOM(false);
}

ErrorCode QuillonComponent::LoadDocument(std::string_view xmlDescription, std::string& xmlDescriptionAnnotated,
                                         std::string& neededChannelGroups) {
  firstRegistrationError = HALCYON_SUCCESS;
  ErrorCode result = HALCYON_SUCCESS;
  if (parser) result = parser->Parse(*this, xmlDescription, &xmlDescriptionAnnotated, &neededChannelGroups);
  if (result != HALCYON_SUCCESS) RaiseError(QUILLONCOMPONENT_INITIALIZEVIEWER);
  Redraw();
  return result != HALCYON_SUCCESS ? result : firstRegistrationError;
}

ErrorCode QuillonComponent::RegisterInDecoder(const std::string& controlPathName, std::int32_t groupNumber,
                                              std::uint32_t channelNumber,
                                              std::unique_ptr<ZrValueDecodingCallbackInterface> mapping) {
  ZrValueDecodingCallbackInterface* receiver = mapping.get();
  if (!receiver) return RaiseRootError(QUILLONCOMPONENT_REGISTERINDECODER);
  mappings.push_back(std::move(mapping));
  if (!decoder || decoder->Register(controlPathName, groupNumber, channelNumber, receiver) != HALCYON_SUCCESS) {
    // The root of the list is the decoder's reason; later routes may replace it.
    if (firstRegistrationError == HALCYON_SUCCESS)
      firstRegistrationError = decoder ? ZrErrorHandler::Instance().CodeAt(0) : QUILLONCOMPONENT_REGISTERINDECODER;
    return RaiseError(QUILLONCOMPONENT_REGISTERINDECODER);
  }
  return HALCYON_SUCCESS;
}

ErrorCode QuillonComponent::RegisterRoute(RouteRecord& route) {
  return RegisterInDecoder(route.controlPathName, route.groupNumber, route.channelNumber,
                           routeValues.Tap(route, std::move(route.mapping)));
}

void QuillonComponent::ClearMappings() {
  // The decoder forgets the receivers before they are deleted, and the taps go before the
  // routes they write into.
  if (decoder) decoder->Clear();
  mappings.clear();
  routeValues.Clear();
}

std::string QuillonComponent::SendChannels(const unsigned char* bytes, std::size_t size) {
  ErrorCode result = HALCYON_SUCCESS;
  if (decoder) result = decoder->DecodeChannelgroup(bytes, size);
  Redraw();
  return ConvertErrorTreeForCOM(result != HALCYON_SUCCESS);
}

void QuillonComponent::SetBackgroundColour(float rTop, float gTop, float bTop, float rBottom, float gBottom,
                                           float bBottom) {
  if (sceneGraph) sceneGraph->setBackgroundColours(rTop, gTop, bTop, rBottom, gBottom, bBottom);
}

void QuillonComponent::SetForegroundColour(double r, double g, double b) {
  if (!sceneGraph) return;
  sceneGraph->setForegroundOverride(true, static_cast<float>(r), static_cast<float>(g), static_cast<float>(b));
  Redraw();
}

void QuillonComponent::RemoveForegroundColour() {
  if (!sceneGraph) return;
  sceneGraph->setForegroundOverride(false, 0.0f, 0.0f, 0.0f);
  Redraw();
}

void QuillonComponent::EnableContextMenu() {
  if (IViewportManipulator* m = Manipulator()) m->SetContextMenuEnabled(true);
}

void QuillonComponent::DisableContextMenu() {
  if (IViewportManipulator* m = Manipulator()) m->SetContextMenuEnabled(false);
}

void QuillonComponent::EnableNavigationControls() {
  if (IViewportManipulator* m = Manipulator()) m->SetNavigationControlsShown(true);
}

void QuillonComponent::DisableNavigationControls() {
  if (IViewportManipulator* m = Manipulator()) m->SetNavigationControlsShown(false);
}

void QuillonComponent::EnableMouseNavigation() {
  if (IViewportManipulator* m = Manipulator()) m->SetMouseNavigationEnabled(true);
}

void QuillonComponent::DisableMouseNavigation() {
  if (IViewportManipulator* m = Manipulator()) m->SetMouseNavigationEnabled(false);
}

void QuillonComponent::ViewAll() {
  if (IViewportManipulator* m = Manipulator()) {
    m->ViewAll();
    return;
  }
  // Without navigation (a headless viewer) the camera is fitted to the scene directly.
  if (!sceneGraph) return;
  float x = 0, y = 0, z = 0, radius = 0;
  sceneGraph->boundingSphere(x, y, z, radius);
  sceneGraph->camera().zoomToSphere(x, y, z, radius);
  Redraw();
}

bool QuillonComponent::GetCameraPosition(CameraTexts& texts) {
  ICamera& camera = Camera();
  double x = 0, y = 0, z = 0;
  camera.getPosition(x, y, z);
  if (!format3(texts[0], x * kToHost, y * kToHost, z * kToHost)) return false;
  double ax = 0, ay = 0, az = 0, angle = 0;
  camera.getOrientationAxisAngle(ax, ay, az, angle);
  if (!format4(texts[1], ax, ay, az, angle)) return false;
  double nearDistance = 0, farDistance = 0, focalDistance = 0, zoomFactor = 0;
  camera.getNearDistance(nearDistance);
  if (!format1(texts[2], nearDistance * kToHost)) return false;
  camera.getFarDistance(farDistance);
  if (!format1(texts[3], farDistance * kToHost)) return false;
  camera.getFocalDistance(focalDistance);
  if (!format1(texts[4], focalDistance * kToHost)) return false;
  camera.getZoomFactor(zoomFactor);
  return format1(texts[5], zoomFactor);
}

bool QuillonComponent::SetCameraPosition(const CameraTexts& texts) {
  ICamera& camera = Camera();
  double x, y, z, w;
  if (std::sscanf(texts[0].c_str(), "%lf %lf %lf", &x, &y, &z) != 3) return false;
  camera.setPosition(x * kToScene, y * kToScene, z * kToScene);
  if (std::sscanf(texts[1].c_str(), "%lf %lf %lf %lf", &x, &y, &z, &w) != 4) return false;
  camera.setOrientationAxisAngle(x, y, z, w);
  double value;
  if (std::sscanf(texts[2].c_str(), "%lf", &value) != 1) return false;
  camera.setNearDistance(value * kToScene);
  if (std::sscanf(texts[3].c_str(), "%lf", &value) != 1) return false;
  camera.setFarDistance(value * kToScene);
  if (std::sscanf(texts[4].c_str(), "%lf", &value) != 1) return false;
  camera.setFocalDistance(value * kToScene);
  if (std::sscanf(texts[5].c_str(), "%lf", &value) != 1) return false;
  camera.setZoomFactor(value);
  Redraw();
  return true;
}

bool QuillonComponent::HideNode(const std::string& nodeName) { return SetNodeChoice(nodeName, -1); }

bool QuillonComponent::UnhideNode(const std::string& nodeName) { return SetNodeChoice(nodeName, 0); }

bool QuillonComponent::SetNodeChoice(const std::string& nodeName, int choice) {
  if (nodeName.empty() || !sceneGraph) return false;
  if (!sceneGraph->setSwitchChoice(nodeName, choice)) return false;
  Redraw();
  return true;
}

void QuillonComponent::SetMeaningfulThreshold(float threshold) {
  routeValues.SetMeaningfulThreshold(threshold);
  if (decoder) decoder->SetMeaningfulThreshold(threshold);
}

void QuillonComponent::SetNominalThreshold(float threshold) {
  routeValues.SetNominalThreshold(threshold);
  if (decoder) decoder->SetNominalThreshold(threshold);
}

void QuillonComponent::SetViewportManipulationMode(unsigned char mode) {
  // The host numbers the modes differently from the manipulator, on purpose.
  static constexpr int kHostToManipulator[] = {IViewportManipulator::MODE_ZOOM, IViewportManipulator::MODE_PAN,
                                               IViewportManipulator::MODE_ROTATE};
  if (mode >= std::size(kHostToManipulator)) return;
  if (IViewportManipulator* m = Manipulator()) m->SetMode(kHostToManipulator[mode]);
}

bool QuillonComponent::SupportsVersion(long versionNumber) { return versionNumber >= 1 && versionNumber <= 3; }

std::string QuillonComponent::ConvertErrorTreeForCOM(bool hadError) {
  if (!hadError) return {};
  RaiseError(QUILLONCOMPONENT_CONVERTERRORTREEFORCOM);
  return ZrErrorHandler::Instance().GetErrorText();
}

void QuillonComponent::Redraw() {
  if (sceneGraph) sceneGraph->refresh(0);
}

ICamera& QuillonComponent::Camera() {
  static osgFakeCamera fake;
  return sceneGraph ? sceneGraph->camera() : fake;
}

IViewportManipulator* QuillonComponent::Manipulator() {
  return sceneGraph ? sceneGraph->viewportManipulator() : nullptr;
}

}  // namespace quillon
