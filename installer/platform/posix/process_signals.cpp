#include "platform/posix/process_signals.h"

#include <signal.h>

#include <cerrno>

namespace platform::posix {

Expected<void, Error> PosixProcessSignals::kill(std::int32_t pid, int signal) {
    if (pid <= 0) return errorNumberFailure(ESRCH);
    if (::kill(static_cast<pid_t>(pid), signal) == 0) return {};
    return errorNumberFailure(errno);
}

}  // namespace platform::posix
