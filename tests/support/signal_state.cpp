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

// " 1 13" for the mask "…0000000000001001" (bit n - 1 stands for signal n).
std::string standardSignalsIn(const std::string& mask) {
    unsigned long long bits = std::stoull(mask, nullptr, 16);
    std::string numbers;
    for (int signal = 1; signal < 32; ++signal) {
        if (bits & (1ull << (signal - 1))) numbers += " " + std::to_string(signal);
    }
    return numbers;
}

}  // namespace

std::string blockedAndIgnoredSignals(pid_t pid) {
    return blockedAndIgnoredSignalsIn(readFile("/proc/" + std::to_string(pid) + "/status"));
}

std::string blockedAndIgnoredSignalsIn(const std::string& statusText) {
    std::istringstream status(statusText);
    std::string blocked, ignored;
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("SigBlk:\t")) blocked = standardSignalsIn(line.substr(8));
        if (line.starts_with("SigIgn:\t")) ignored = standardSignalsIn(line.substr(8));
    }
    if (blocked.empty() && ignored.empty()) return "";
    return "blocked" + blocked + ", ignored" + ignored;
}

}  // namespace testing_support
