#pragma once
// The control: the host's dispatch interface over one viewer component.

#include <cstddef>
#include <memory>
#include <vector>

#include "control/QuillonComponent.h"
#include "quillon/quillon.h"

namespace quillon {

/// Converts the host's arguments (C strings, byte arrays) to the component's and back,
/// and keeps the buffer that channel-group messages are copied into.
class CQuillonCtrl {
 public:
  /// Dispatch identifiers of the host interface.
  enum DispatchId : int {
    DISPID_SupportsVersion = 1,
    DISPID_SetBackgroundColour_v1 = 2,
    DISPID_SendChannels_v1 = 3,
    DISPID_InitializeViewer_v1 = 4,
    DISPID_SetForegroundColour_v1 = 5,
    DISPID_RemoveForegroundColour_v1 = 6,
    DISPID_EnableContextMenu_v1 = 7,
    DISPID_DisableContextMenu_v1 = 8,
    DISPID_EnableNavigationControls_v1 = 9,
    DISPID_DisableNavigationControls_v1 = 10,
    DISPID_GetCameraPosition_v1 = 11,
    DISPID_SetCameraPosition_v1 = 12,
    DISPID_GetMinimalWindowWidth_v1 = 13,
    DISPID_GetMinimalWindowHeight_v1 = 14,
    DISPID_HideNode_v1 = 15,
    DISPID_UnhideNode_v1 = 16,
    DISPID_EnableMouseNavigation_v2 = 17,
    DISPID_DisableMouseNavigation_v2 = 18,
    DISPID_ViewAll_v2 = 19,
    DISPID_SetMeaningfulThreshold = 20,
    DISPID_SetNominalThreshold = 21,
    DISPID_SetViewportManipulationMode = 22,
  };

  static constexpr std::size_t kInitialBufferSize = 100;
  static constexpr long kMaxMessageBytes = QUILLON_MAX_MESSAGE_BYTES;

  CQuillonCtrl();
  explicit CQuillonCtrl(ComponentParts parts);

  QuillonComponent& component() { return *component_; }
  std::size_t channelBufferSize() const { return channelBuffer.size(); }

  int CreateWindow(unsigned long parent, int width, int height);
  void Resize(int width, int height);
  void DestroyWindow();
  int RenderRgba(unsigned char* pixels, std::size_t size);
  char* ErrorText();

  QuillonBytes SendChannels_v1(const unsigned char* encodedChannels, long count);
  QuillonBytes InitializeViewer_v1(char** xmlDescription, char** xmlDescriptionAnnotated, char** neededChannelGroups);
  int GetCameraPosition_v1(char** texts[6]);
  int SetCameraPosition_v1(char** texts[6]);
  int HideNode_v1(char** nodeName);
  int UnhideNode_v1(char** nodeName);

  /// InitializeViewer_v1 that returns 0 or the code of the load's first error.
  int LoadDocument(const char* xml, char** annotated, char** neededGroups);
  /// Handles the pending window events of a viewer embedded into a native window.
  void ProcessEvents();

 private:
  std::unique_ptr<QuillonComponent> component_;
  std::vector<unsigned char> channelBuffer;
  std::size_t messageSize;  // bytes of the last message copied into the buffer
};

}  // namespace quillon
