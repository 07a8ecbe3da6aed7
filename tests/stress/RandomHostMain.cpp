// The random host as a program: a seed, a time or a number of calls, and a report of where it
// died should the library take it down.
//   random_host --seed S [--seconds T | --calls N] [--x11] [--log]
// With --x11 and a display it also embeds viewers into X11 windows of its own, and destroys
// those windows under them. It ends with 0 when the library survived and kept its word, with 1
// when a result broke a promise of the interface or OpenGL reported an error, and with the
// signal of a crash; either way it names the seed and the call, which --calls replays up to.
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "RandomHost.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#define QUILLON_STRESS_SANITIZED 1
#endif

namespace {

using namespace quillon::stress;

// What a crash report names. Written from a signal handler, so only plain values.
std::uint64_t reportSeed = 0;
std::uint64_t reportCall = 0;
bool reportX11 = false;

void WriteNumber(std::uint64_t n) {
  char digits[24];
  int i = 0;
  do {
    digits[i++] = static_cast<char>('0' + n % 10);
    n /= 10;
  } while (n && i < 24);
  while (i > 0) {
    const char c = digits[--i];
    if (write(STDERR_FILENO, &c, 1) < 0) return;
  }
}

void WriteText(const char* text) {
  if (write(STDERR_FILENO, text, std::strlen(text)) < 0) return;
}

void ReportWhereWeWere() {
  WriteText(currentAction ? "random host: died in call " : "random host: died at exit (the leak check) after call ");
  WriteNumber(reportCall);
  if (currentAction) {
    WriteText(" (");
    WriteText(currentAction);
    WriteText(")");
  }
  WriteText(" of seed ");
  WriteNumber(reportSeed);
  WriteText("; replay with: random_host --seed ");
  WriteNumber(reportSeed);
  WriteText(" --calls ");
  WriteNumber(reportCall);
  WriteText(reportX11 ? " --x11\n" : "\n");
}

#ifdef QUILLON_STRESS_SANITIZED
// The sanitizers keep their own signal handlers; they call this before they end the process.
void InstallCrashReport() { __sanitizer_set_death_callback(ReportWhereWeWere); }
#else
void OnFatalSignal(int signal) {
  ReportWhereWeWere();
  ::signal(signal, SIG_DFL);
  raise(signal);
}

void InstallCrashReport() {
  for (int s : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) signal(s, OnFatalSignal);
}
#endif

struct Options {
  std::uint64_t seed = 1;
  double seconds = -1;
  std::uint64_t calls = 0;
  bool log = false;
  bool x11 = false;
};

bool Parse(int argc, char** argv, Options& options) {
  for (int i = 1; i < argc; ++i) {
    const std::string_view arg(argv[i]);
    const char* value = i + 1 < argc ? argv[i + 1] : nullptr;
    if (arg == "--log") {
      options.log = true;
    } else if (arg == "--x11") {
      options.x11 = true;
    } else if (arg == "--seed" && value) {
      options.seed = std::strtoull(value, nullptr, 10);
      ++i;
    } else if (arg == "--seconds" && value) {
      options.seconds = std::strtod(value, nullptr);
      ++i;
    } else if (arg == "--calls" && value) {
      options.calls = std::strtoull(value, nullptr, 10);
      ++i;
    } else {
      return false;
    }
  }
  if (options.seconds < 0) options.seconds = options.calls ? 1e9 : 30;
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  if (!Parse(argc, argv, options)) {
    std::fprintf(stderr, "usage: random_host [--seed S] [--seconds T] [--calls N] [--x11] [--log]\n");
    return 2;
  }
  reportSeed = options.seed;
  reportX11 = options.x11;
  InstallCrashReport();
  const RealInputs real = RealInputs::Load(QUILLON_SOURCE_DIR);
  const auto start = std::chrono::steady_clock::now();
  const auto end = start + std::chrono::duration<double>(options.seconds);
  int status = 0;
  {
    RandomHost host(options.seed, real, options.x11);
    host.stats.log = options.log;
    quillon_set_trace_callback(OnTrace, &host.stats);
    while ((!options.calls || host.stats.calls < options.calls) && std::chrono::steady_clock::now() < end) {
      reportCall = host.stats.calls + 1;
      host.Step();
      if (options.log) std::fprintf(stderr, "%llu %s\n", static_cast<unsigned long long>(reportCall), currentAction);
      if (!host.stats.broken.empty() || host.stats.glErrors > 0) {
        std::fprintf(stderr, "random host: %s\n",
                     host.stats.broken.empty() ? host.stats.firstGlError.c_str() : host.stats.broken.c_str());
        ReportWhereWeWere();
        std::fflush(stderr);
        status = 1;
        break;
      }
    }
    currentAction = nullptr;
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const Stats& s = host.stats;
    std::printf(
        "random host: seed %llu: %llu calls in %.1f s; %llu controls, %llu documents (%llu loaded), %llu messages, "
        "%llu frames (%llu drawn); windows: %llu of %llu offscreen, %llu of %llu embedded\n",
        static_cast<unsigned long long>(options.seed), static_cast<unsigned long long>(s.calls), seconds,
        static_cast<unsigned long long>(s.controls), static_cast<unsigned long long>(s.documents),
        static_cast<unsigned long long>(s.loaded), static_cast<unsigned long long>(s.messages),
        static_cast<unsigned long long>(s.frames), static_cast<unsigned long long>(s.drawn),
        static_cast<unsigned long long>(s.offscreenMade), static_cast<unsigned long long>(s.offscreenAsked),
        static_cast<unsigned long long>(s.embeddedMade), static_cast<unsigned long long>(s.embeddedAsked));
  }
  return status;
}
