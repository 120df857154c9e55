// The signal state a process passes on to what it starts, set the way an installer started under
// nohup with a signal blocked would have it, and read back from a started process.
#pragma once

#include <signal.h>
#include <sys/types.h>

#include <ostream>
#include <set>
#include <string>

namespace testing_support {

// While it lives: SIGHUP and SIGPIPE ignored by this process, SIGUSR1 blocked in the calling thread
// (and so in the threads it starts).
class NohupLikeSignals {
public:
    NohupLikeSignals();
    ~NohupLikeSignals();
    NohupLikeSignals(const NohupLikeSignals&) = delete;
    NohupLikeSignals& operator=(const NohupLikeSignals&) = delete;

private:
    struct sigaction hangUp_ {}, brokenPipe_ {};
    sigset_t mask_;
};

// The standard signals (1 to 31) a process blocks and ignores, by number, as /proc reports them.
// (glibc's posix_spawn leaves the two real-time signals it keeps for itself ignored in every child;
// those are left out.)
struct SignalState {
    std::set<int> blocked, ignored;

    bool operator==(const SignalState&) const = default;
    friend void PrintTo(const SignalState& state, std::ostream* out);
};

SignalState signalStateOf(pid_t pid);
// The same, from the text of a /proc/<pid>/status file.
SignalState signalStateIn(const std::string& status);

}  // namespace testing_support
