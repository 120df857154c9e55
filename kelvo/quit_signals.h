// The signals that end the stand-in Kelvo: SIGTERM (unless it is told to ignore it), SIGINT and
// SIGHUP, taken by one waiting thread rather than by a handler.
#pragma once

#include <signal.h>

namespace kelvo {

// Blocks the quit signals in the calling thread, and so in every thread started after it, so that
// only waitForQuitSignal receives them; with `ignoreTerminate`, SIGTERM is ignored instead. Call it
// before any thread starts. Returns the signals to wait for.
sigset_t blockQuitSignals(bool ignoreTerminate);

// Waits until one of `signals` arrives and returns its number.
int waitForQuitSignal(const sigset_t& signals);

}  // namespace kelvo
