#include "control/CQuillonCtrl.h"

#include <algorithm>
#include <cstring>

#include "control/ComponentErrorCodes.h"
#include "control/HostEvents.h"
#include "control/HostStrings.h"
#include "core/ZrErrorHandler.h"

namespace quillon {
namespace {

// What SetCameraPosition_v1 uses for an argument that the host left null.
constexpr const char* kCameraDefaults[6] = {"0.0 0.0 0.0", "0.0 1.0 0.0 0.0", "0.1", "10.0", "5.0", "1.0"};

}  // namespace

CQuillonCtrl::CQuillonCtrl() : CQuillonCtrl(MakeDefaultParts()) {}

CQuillonCtrl::CQuillonCtrl(ComponentParts parts)
    : component_(std::make_unique<QuillonComponent>(std::move(parts))),
      channelBuffer(kInitialBufferSize, 0),
      messageSize(kInitialBufferSize) {}

int CQuillonCtrl::CreateWindow(unsigned long parent, int width, int height) {
  if (width <= 0 || height <= 0 || width > 16384 || height > 16384) return 1;
  return component_->CreateViewerWindow(parent, width, height);
}

void CQuillonCtrl::Resize(int width, int height) {
  if (width <= 0 || height <= 0 || width > 16384 || height > 16384) return;
  component_->Resize(width, height);
}

void CQuillonCtrl::DestroyWindow() { component_->DestroyViewerWindow(); }

int CQuillonCtrl::RenderRgba(unsigned char* pixels, std::size_t size) { return component_->RenderRgba(pixels, size); }

char* CQuillonCtrl::ErrorText() { return CopyToHost(ZrErrorHandler::Instance().GetErrorText()); }

QuillonBytes CQuillonCtrl::SendChannels_v1(const unsigned char* encodedChannels, long count) {
  if (count < 0 || count > kMaxMessageBytes) {
    RaiseRootError(CQUILLONCTRL_SENDCHANNELS_BADCOUNT);
    return ToHostBytes(component_->ConvertErrorTreeForCOM(true));
  }
  const auto bytes = static_cast<std::size_t>(count);
  // The buffer only grows; what it held stays, so a call without bytes decodes it again.
  if (bytes > channelBuffer.size()) channelBuffer.resize(bytes, 0);
  if (encodedChannels && bytes > 0) {
    std::memcpy(channelBuffer.data(), encodedChannels, bytes);
    messageSize = bytes;
  }
  return ToHostBytes(component_->SendChannels(channelBuffer.data(), std::min(messageSize, channelBuffer.size())));
}

QuillonBytes CQuillonCtrl::InitializeViewer_v1(char** xmlDescription, char** xmlDescriptionAnnotated,
                                               char** neededChannelGroups) {
  std::string annotated = ReadHostString(xmlDescriptionAnnotated);
  std::string needed = ReadHostString(neededChannelGroups);
  // The document is read where the host keeps it: a big scene is not copied once more.
  const std::string_view document = xmlDescription && *xmlDescription ? *xmlDescription : "";
  const std::string result = component_->InitializeViewer(document, annotated, needed);
  WriteHostString(xmlDescriptionAnnotated, annotated);
  WriteHostString(neededChannelGroups, needed);
  return ToHostBytes(result);
}

int CQuillonCtrl::LoadDocument(const char* xml, char** annotated, char** neededGroups) {
  std::string annotatedText, groups;
  const ErrorCode result =
      component_->LoadDocument(xml ? std::string_view(xml) : std::string_view(), annotatedText, groups);
  WriteHostString(annotated, annotatedText);
  WriteHostString(neededGroups, groups);
  return static_cast<int>(result);
}

void CQuillonCtrl::ProcessEvents() { ProcessEmbeddedViewerEvents(component_->RenderArea()); }

int CQuillonCtrl::GetCameraPosition_v1(char** texts[6]) {
  QuillonComponent::CameraTexts values;
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = ReadHostString(texts[i]);
  const bool ok = component_->GetCameraPosition(values);
  for (std::size_t i = 0; i < values.size(); ++i) WriteHostString(texts[i], values[i]);
  return ok ? 1 : 0;
}

int CQuillonCtrl::SetCameraPosition_v1(char** texts[6]) {
  QuillonComponent::CameraTexts values;
  for (std::size_t i = 0; i < values.size(); ++i)
    values[i] = texts[i] && *texts[i] ? std::string(*texts[i]) : std::string(kCameraDefaults[i]);
  const bool ok = component_->SetCameraPosition(values);
  for (std::size_t i = 0; i < values.size(); ++i) WriteHostString(texts[i], values[i]);
  return ok ? 1 : 0;
}

int CQuillonCtrl::HideNode_v1(char** nodeName) { return component_->HideNode(ReadHostString(nodeName)) ? 1 : 0; }

int CQuillonCtrl::UnhideNode_v1(char** nodeName) { return component_->UnhideNode(ReadHostString(nodeName)) ? 1 : 0; }

}  // namespace quillon
