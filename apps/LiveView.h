#pragma once
// quillon view fed by a live bus: the connections and what the status bar says of them.

#include <string>

#include "LiveOptions.h"

class QStatusBar;

namespace quillon {
class QuillonWidget;
}

namespace quillon::app {

/// Connects the viewer to the live sources of the command line and has the status bar show how
/// they are doing. Returns the error text, empty on success.
std::string ShowLive(QuillonWidget& viewer, const LiveOptions& options, QStatusBar& bar);

/// Says once, on closing, what the live sources delivered and what the viewer did not take cleanly.
void ReportLive(const QuillonWidget& viewer);

}  // namespace quillon::app
