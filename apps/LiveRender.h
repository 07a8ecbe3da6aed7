#pragma once
// quillon render fed by a live bus instead of a recorded stream.

#include <cstdint>
#include <string>

#include "LiveOptions.h"

namespace quillon::app {

class OffscreenViewer;
class SendErrorLog;

struct LiveRenderOptions {
  LiveOptions source;          // where the messages come from
  std::uint64_t messages = 1;  // applied messages to wait for
  double timeout = 10;         // seconds
  std::string output;          // the image written once they are applied, or empty
  std::string frames;          // the folder for one image per applied message, or empty
};

/// Subscribes to the groups of `neededGroups` (the document's needed-groups text), applies what
/// arrives to the viewer, newest of each group first, until `messages` were applied, then writes
/// the image. Returns the exit status: 1 when the time-out passed first.
int RenderLive(OffscreenViewer& viewer, const std::string& neededGroups, const LiveRenderOptions& options,
               SendErrorLog& errors);

}  // namespace quillon::app
