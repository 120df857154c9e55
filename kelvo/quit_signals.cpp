#include "quit_signals.h"

namespace kelvo {

sigset_t blockQuitSignals(bool ignoreTerminate) {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGHUP);
    if (ignoreTerminate) {
        signal(SIGTERM, SIG_IGN);
    } else {
        sigaddset(&signals, SIGTERM);
    }
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

int waitForQuitSignal(const sigset_t& signals) {
    int received = 0;
    sigwait(&signals, &received);
    return received;
}

}  // namespace kelvo
