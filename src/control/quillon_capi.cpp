// The exported C functions: thin trampolines that turn a null control or any exception
// into the function's neutral result, so nothing ever unwinds into the host.
#include <cstdlib>
#include <new>
#include <string>
#include <string_view>

#include "control/CQuillonCtrl.h"
#include "control/ComponentErrorCodes.h"
#include "core/Trace.h"
#include "quillon/quillon.h"

struct QuillonCtrl {
  quillon::CQuillonCtrl control;
};

namespace {

template <typename Result, typename Call>
Result guarded(QuillonCtrl* ctrl, Result neutral, Call call) noexcept {
  if (!ctrl) return neutral;
  try {
    return call(ctrl->control);
  } catch (...) {
    return neutral;
  }
}

template <typename Call>
void guarded(QuillonCtrl* ctrl, Call call) noexcept {
  if (!ctrl) return;
  try {
    call(ctrl->control);
  } catch (...) {
  }
}

constexpr QuillonBytes kNoBytes{nullptr, 0};
using Ctrl = quillon::CQuillonCtrl;

}  // namespace

extern "C" {

QuillonCtrl* quillon_create(void) {
  try {
    return new QuillonCtrl{};
  } catch (...) {
    return nullptr;
  }
}

void quillon_destroy(QuillonCtrl* ctrl) {
  try {
    delete ctrl;
  } catch (...) {
  }
}

int quillon_create_window(QuillonCtrl* ctrl, unsigned long parent, int width, int height) {
  return guarded(ctrl, 1, [&](Ctrl& c) { return c.CreateWindow(parent, width, height); });
}

void quillon_resize(QuillonCtrl* ctrl, int width, int height) {
  guarded(ctrl, [&](Ctrl& c) { c.Resize(width, height); });
}

void quillon_destroy_window(QuillonCtrl* ctrl) {
  guarded(ctrl, [](Ctrl& c) { c.DestroyWindow(); });
}

void quillon_free(void* p) { std::free(p); }

int quillon_render_rgba(QuillonCtrl* ctrl, unsigned char* pixels, size_t size) {
  return guarded(ctrl, 1, [&](Ctrl& c) { return c.RenderRgba(pixels, size); });
}

char* quillon_error_text(QuillonCtrl* ctrl) {
  return guarded(ctrl, static_cast<char*>(nullptr), [](Ctrl& c) { return c.ErrorText(); });
}

int quillon_SupportsVersion(QuillonCtrl* ctrl, long versionNumber) {
  return guarded(ctrl, 0, [&](Ctrl&) { return quillon::QuillonComponent::SupportsVersion(versionNumber) ? 1 : 0; });
}

void quillon_SetBackgroundColour_v1(QuillonCtrl* ctrl, float rTop, float gTop, float bTop, float rBottom, float gBottom,
                                    float bBottom) {
  guarded(ctrl, [&](Ctrl& c) { c.component().SetBackgroundColour(rTop, gTop, bTop, rBottom, gBottom, bBottom); });
}

QuillonBytes quillon_SendChannels_v1(QuillonCtrl* ctrl, const unsigned char* encodedChannels, long count) {
  return guarded(ctrl, kNoBytes, [&](Ctrl& c) { return c.SendChannels_v1(encodedChannels, count); });
}

QuillonBytes quillon_InitializeViewer_v1(QuillonCtrl* ctrl, char** xmlDescription, char** xmlDescriptionAnnotated,
                                         char** neededChannelGroups) {
  return guarded(ctrl, kNoBytes, [&](Ctrl& c) {
    return c.InitializeViewer_v1(xmlDescription, xmlDescriptionAnnotated, neededChannelGroups);
  });
}

void quillon_SetForegroundColour_v1(QuillonCtrl* ctrl, double r, double g, double b) {
  guarded(ctrl, [&](Ctrl& c) { c.component().SetForegroundColour(r, g, b); });
}

void quillon_RemoveForegroundColour_v1(QuillonCtrl* ctrl) {
  guarded(ctrl, [](Ctrl& c) { c.component().RemoveForegroundColour(); });
}

void quillon_EnableContextMenu_v1(QuillonCtrl* ctrl) {
  guarded(ctrl, [](Ctrl& c) { c.component().EnableContextMenu(); });
}

void quillon_DisableContextMenu_v1(QuillonCtrl* ctrl) {
  guarded(ctrl, [](Ctrl& c) { c.component().DisableContextMenu(); });
}

void quillon_EnableNavigationControls_v1(QuillonCtrl* ctrl) {
  guarded(ctrl, [](Ctrl& c) { c.component().EnableNavigationControls(); });
}

void quillon_DisableNavigationControls_v1(QuillonCtrl* ctrl) {
  guarded(ctrl, [](Ctrl& c) { c.component().DisableNavigationControls(); });
}

int quillon_GetCameraPosition_v1(QuillonCtrl* ctrl, char** position, char** orientation, char** nearDistance,
                                 char** farDistance, char** focalDistance, char** zoomfactor) {
  return guarded(ctrl, 0, [&](Ctrl& c) {
    char** texts[6] = {position, orientation, nearDistance, farDistance, focalDistance, zoomfactor};
    return c.GetCameraPosition_v1(texts);
  });
}

int quillon_SetCameraPosition_v1(QuillonCtrl* ctrl, char** position, char** orientation, char** nearDistance,
                                 char** farDistance, char** focalDistance, char** zoomfactor) {
  return guarded(ctrl, 0, [&](Ctrl& c) {
    char** texts[6] = {position, orientation, nearDistance, farDistance, focalDistance, zoomfactor};
    return c.SetCameraPosition_v1(texts);
  });
}

long quillon_GetMinimalWindowWidth_v1(QuillonCtrl* ctrl) {
  return guarded(ctrl, 0L, [](Ctrl&) { return quillon::QuillonComponent::GetMinimalWindowWidth(); });
}

long quillon_GetMinimalWindowHeight_v1(QuillonCtrl* ctrl) {
  return guarded(ctrl, 0L, [](Ctrl&) { return quillon::QuillonComponent::GetMinimalWindowHeight(); });
}

int quillon_HideNode_v1(QuillonCtrl* ctrl, char** nodeName) {
  return guarded(ctrl, 0, [&](Ctrl& c) { return c.HideNode_v1(nodeName); });
}

int quillon_UnhideNode_v1(QuillonCtrl* ctrl, char** nodeName) {
  return guarded(ctrl, 0, [&](Ctrl& c) { return c.UnhideNode_v1(nodeName); });
}

void quillon_EnableMouseNavigation_v2(QuillonCtrl* ctrl) {
  guarded(ctrl, [](Ctrl& c) { c.component().EnableMouseNavigation(); });
}

void quillon_DisableMouseNavigation_v2(QuillonCtrl* ctrl) {
  guarded(ctrl, [](Ctrl& c) { c.component().DisableMouseNavigation(); });
}

void quillon_ViewAll_v2(QuillonCtrl* ctrl) {
  guarded(ctrl, [](Ctrl& c) { c.component().ViewAll(); });
}

void quillon_SetMeaningfulThreshold(QuillonCtrl* ctrl, float threshold) {
  guarded(ctrl, [&](Ctrl& c) { c.component().SetMeaningfulThreshold(threshold); });
}

void quillon_SetNominalThreshold(QuillonCtrl* ctrl, float threshold) {
  guarded(ctrl, [&](Ctrl& c) { c.component().SetNominalThreshold(threshold); });
}

void quillon_SetViewportManipulationMode(QuillonCtrl* ctrl, unsigned char mode) {
  guarded(ctrl, [&](Ctrl& c) { c.component().SetViewportManipulationMode(mode); });
}

int quillon_load_document(QuillonCtrl* ctrl, const char* xml, char** annotated, char** neededGroups) {
  return guarded(ctrl, static_cast<int>(quillon::QUILLONCOMPONENT_INITIALIZEVIEWER),
                 [&](Ctrl& c) { return c.LoadDocument(xml, annotated, neededGroups); });
}

void quillon_set_trace_callback(void (*fn)(const char* line, void* user), void* user) {
  try {
    if (!fn) {
      quillon::SetTraceSink({});
      return;
    }
    quillon::SetTraceSink([fn, user](std::string_view line) {
      std::string text(line);
      if (!text.empty() && text.back() == '\n') text.pop_back();
      fn(text.c_str(), user);
    });
  } catch (...) {
  }
}

void quillon_process_events(QuillonCtrl* ctrl) {
  guarded(ctrl, [](Ctrl& c) { c.ProcessEvents(); });
}

}  // extern "C"
