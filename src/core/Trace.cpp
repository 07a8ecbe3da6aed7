#include "core/Trace.h"

#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace quillon {
namespace {

TraceSink& sink() {
  static TraceSink s;
  return s;
}

bool traceToStderr() {
  static const bool enabled = std::getenv("QUILLON_TRACE") != nullptr;
  return enabled;
}

}  // namespace

void Trace(const char* format, ...) {
  if (!format || (!sink() && !traceToStderr())) return;
  va_list args;
  va_start(args, format);
  va_list copy;
  va_copy(copy, args);
  const int size = std::vsnprintf(nullptr, 0, format, copy);
  va_end(copy);
  std::string line;
  if (size > 0) {
    line.resize(static_cast<std::size_t>(size) + 1);
    std::vsnprintf(line.data(), line.size(), format, args);
    line.pop_back();
  }
  va_end(args);
  if (sink())
    sink()(line);
  else
    std::fputs(line.c_str(), stderr);
}

TraceSink SetTraceSink(TraceSink s) {
  TraceSink previous = std::move(sink());
  sink() = std::move(s);
  return previous;
}

std::uint32_t GetTickCount() {
  using namespace std::chrono;
  const auto ms = duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
  return static_cast<std::uint32_t>(ms);
}

double ElapsedSeconds(std::uint32_t startTick, std::uint32_t endTick) {
  return static_cast<double>(endTick - startTick) * 0.001;
}

}  // namespace quillon
