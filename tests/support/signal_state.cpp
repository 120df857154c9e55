#include "support/signal_state.h"

#include <pthread.h>

#include <sstream>

#include "support/temp_folder.h"

namespace testing_support {

NohupLikeSignals::NohupLikeSignals() {
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGHUP, &ignore, &hangUp_);
    sigaction(SIGPIPE, &ignore, &brokenPipe_);
    sigset_t userSignal;
    sigemptyset(&userSignal);
    sigaddset(&userSignal, SIGUSR1);
    pthread_sigmask(SIG_BLOCK, &userSignal, &mask_);
}

NohupLikeSignals::~NohupLikeSignals() {
    pthread_sigmask(SIG_SETMASK, &mask_, nullptr);
    sigaction(SIGPIPE, &brokenPipe_, nullptr);
    sigaction(SIGHUP, &hangUp_, nullptr);
}

namespace {

// The signals 1 to 31 of the mask "…0000000000001001" (bit n - 1 stands for signal n).
std::set<int> standardSignalsIn(const std::string& mask) {
    unsigned long long bits = std::stoull(mask, nullptr, 16);
    std::set<int> signals;
    for (int signal = 1; signal < 32; ++signal) {
        if (bits & (1ull << (signal - 1))) signals.insert(signal);
    }
    return signals;
}

}  // namespace

void PrintTo(const SignalState& state, std::ostream* out) {
    *out << "blocked";
    for (int signal : state.blocked) *out << " " << signal;
    *out << ", ignored";
    for (int signal : state.ignored) *out << " " << signal;
}

SignalState signalStateOf(pid_t pid) { return signalStateIn(readFile("/proc/" + std::to_string(pid) + "/status")); }

SignalState signalStateIn(const std::string& statusText) {
    std::istringstream status(statusText);
    SignalState state;
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("SigBlk:\t")) state.blocked = standardSignalsIn(line.substr(8));
        if (line.starts_with("SigIgn:\t")) state.ignored = standardSignalsIn(line.substr(8));
    }
    return state;
}

}  // namespace testing_support
