#pragma once
// Diagnostic trace output and the millisecond tick.

#include <cstdint>
#include <functional>
#include <string_view>

namespace quillon {

using TraceSink = std::function<void(std::string_view)>;

/// Writes one formatted trace line: to the installed sink when there is one, else to
/// standard error when the environment variable QUILLON_TRACE is set, else nowhere.
void Trace(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// Installs a sink for trace lines (an empty function removes it). Returns the previous one.
TraceSink SetTraceSink(TraceSink sink);

/// Milliseconds since an arbitrary start, as an unsigned 32-bit number that wraps.
std::uint32_t GetTickCount();

/// Seconds between two ticks, the difference taken modulo 2^32.
double ElapsedSeconds(std::uint32_t startTick, std::uint32_t endTick);

}  // namespace quillon
