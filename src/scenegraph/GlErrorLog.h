#pragma once
// OpenGL errors, and values that are not numbers on their way to OpenGL, looked for in test
// builds (QUILLON_CHECK_GL) and nowhere else.

#include <cstddef>
#include <string>

namespace osg {
class State;
}

namespace quillon {

/// Whether this build looks for OpenGL errors at all; every call below does nothing when not.
bool GlErrorChecksEnabled();

/// Has the runtime look for an error after each attribute and mode it applies in this state,
/// and catches its reports of them, which name the attribute, and its reports of matrices that
/// are not numbers. Safe to call every frame.
void WatchGlErrors(osg::State* state);

/// Reads every pending error of the current context and records each as seen at `where`.
/// Returns the number read.
int CheckGlErrors(const char* where);

/// The errors recorded in this process so far, and the text of the last one.
std::size_t GlErrorCount();
std::string LastGlError();

}  // namespace quillon
