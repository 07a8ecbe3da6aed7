#pragma once
// The window events of a viewer that lives in a host's native window.

namespace quillon {

class IRenderArea;

/// Handles the window events that are waiting for an embedded viewer (input, timers, the
/// context menu), for hosts whose own event loop knows nothing of the viewer's toolkit. Does
/// nothing for an offscreen render area, or when called from a thread other than the viewer's.
void ProcessEmbeddedViewerEvents(IRenderArea* area);

}  // namespace quillon
