#pragma once
// Ctrl-C and SIGTERM for the commands that run until they are told to stop.

namespace quillon::app {

/// From now on the first SIGINT or SIGTERM asks the command to stop, which it notices within
/// one of its short waits; a second one ends the process at once.
void CatchStopSignals();
bool StopRequested();

}  // namespace quillon::app
