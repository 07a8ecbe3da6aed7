#include "StopSignal.h"

#include <csignal>

namespace quillon::app {
namespace {

volatile std::sig_atomic_t stopRequested = 0;

void OnStopSignal(int signal) {
  if (stopRequested) {
    std::signal(signal, SIG_DFL);
    std::raise(signal);
  }
  stopRequested = 1;
}

}  // namespace

void CatchStopSignals() {
  std::signal(SIGINT, OnStopSignal);
  std::signal(SIGTERM, OnStopSignal);
}

bool StopRequested() { return stopRequested != 0; }

}  // namespace quillon::app
