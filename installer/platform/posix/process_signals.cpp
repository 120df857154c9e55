#include "platform/posix/process_signals.h"

#include <signal.h>

#include <cerrno>

namespace platform::posix {

int PosixProcessSignals::kill(std::int32_t pid, int signal) {
    if (pid <= 0) return ESRCH;
    return ::kill(static_cast<pid_t>(pid), signal) == 0 ? 0 : errno;
}

}  // namespace platform::posix
