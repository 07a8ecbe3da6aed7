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
