#pragma once
// quillon view fed by a live bus: the connections and the status bar under the viewer.

#include <string>

#include "LiveOptions.h"

namespace quillon {
class QuillonWidget;
}

namespace quillon::app {

/// Connects the viewer to the live sources of the command line and puts a status bar under it
/// that shows how they are doing. Returns the error text, empty on success.
std::string ShowLive(QuillonWidget& viewer, const LiveOptions& options);

/// Says once, on closing, what the live sources delivered and what the viewer did not take cleanly.
void ReportLive(const QuillonWidget& viewer);

}  // namespace quillon::app
