#pragma once
// The platform-independent facade behind every call of the host.

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "control/ComponentParts.h"
#include "control/RouteValues.h"
#include "visualisation/IMappingRegistrar.h"

namespace quillon {

class ICamera;
class IViewportManipulator;
class ZrValueDecodingCallbackInterface;

/// Owns the decoder, the document reader and the scene mappings of the current document,
/// and drives the scene-graph holder and the manipulator. Errors go to the process-wide
/// error list and reach the host as text.
class QuillonComponent final : public IMappingRegistrar {
 public:
  static constexpr long kMinimalWindowWidth = 463;
  static constexpr long kMinimalWindowHeight = 480;

  /// position, orientation, near, far, focal distance, zoom factor
  using CameraTexts = std::array<std::string, 6>;

  explicit QuillonComponent(ComponentParts parts);
  ~QuillonComponent() override;
  QuillonComponent(const QuillonComponent&) = delete;
  QuillonComponent& operator=(const QuillonComponent&) = delete;

  /// 0 when a render area was made and attached.
  int CreateViewerWindow(unsigned long parent, int width, int height);
  void DestroyViewerWindow();
  void Resize(int width, int height);
  /// Draws and copies the pixels; 0 on success.
  int RenderRgba(unsigned char* pixels, std::size_t size);

  std::string InitializeViewer(std::string_view xmlDescription, std::string& xmlDescriptionAnnotated,
                               std::string& neededChannelGroups);
  /// InitializeViewer that tells how the load went: 0, or the code of the first error it raised
  /// (the document's fault, or a route that could not be registered).
  ErrorCode LoadDocument(std::string_view xmlDescription, std::string& xmlDescriptionAnnotated,
                         std::string& neededChannelGroups);
  ErrorCode RegisterInDecoder(const std::string& controlPathName, std::int32_t groupNumber, std::uint32_t channelNumber,
                              std::unique_ptr<ZrValueDecodingCallbackInterface> mapping) override;
  /// Registers the route's mapping behind a tap that keeps its newest value in Routes().
  ErrorCode RegisterRoute(RouteRecord& route) override;
  void ClearMappings() override;
  std::string SendChannels(const unsigned char* bytes, std::size_t size);

  void SetBackgroundColour(float rTop, float gTop, float bTop, float rBottom, float gBottom, float bBottom);
  void SetForegroundColour(double r, double g, double b);
  void RemoveForegroundColour();
  void EnableContextMenu();
  void DisableContextMenu();
  void EnableNavigationControls();
  void DisableNavigationControls();
  void EnableMouseNavigation();
  void DisableMouseNavigation();
  void ViewAll();
  bool GetCameraPosition(CameraTexts& texts);
  bool SetCameraPosition(const CameraTexts& texts);
  static long GetMinimalWindowWidth() { return kMinimalWindowWidth; }
  static long GetMinimalWindowHeight() { return kMinimalWindowHeight; }
  bool HideNode(const std::string& nodeName);
  bool UnhideNode(const std::string& nodeName);
  void SetMeaningfulThreshold(float threshold);
  void SetNominalThreshold(float threshold);
  void SetViewportManipulationMode(unsigned char mode);
  static bool SupportsVersion(long versionNumber);

  /// Empty when hadError is clear; else adds 1290302 to the error list and returns its text.
  std::string ConvertErrorTreeForCOM(bool hadError);

  std::size_t MappingCount() const { return mappings.size(); }
  /// The bound routes of the document on show with their newest values, and the thresholds.
  const RouteValues& Routes() const { return routeValues; }
  /// The render area that the scene-graph holder draws into, or null.
  IRenderArea* RenderArea() const;

 private:
  void Redraw();
  ICamera& Camera();
  IViewportManipulator* Manipulator();
  bool SetNodeChoice(const std::string& nodeName, int choice);

  std::unique_ptr<IChannelgroupDecoder> decoder;
  std::unique_ptr<IDocumentParser> parser;
  RouteValues routeValues;  // before the mappings, whose taps write into it
  std::vector<std::unique_ptr<ZrValueDecodingCallbackInterface>> mappings;
  ISceneGraphImplementor* sceneGraph;
  RenderAreaFactory makeRenderArea;
  ErrorCode firstRegistrationError = 0;  // of the document being loaded
};

}  // namespace quillon
