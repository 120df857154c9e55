// Signals by process identifier with kill(2): both backends' signal service.
#pragma once

#include "platform/process_signals.h"

namespace platform::posix {

class PosixProcessSignals final : public ProcessSignals {
public:
    Expected<void, Error> kill(std::int32_t pid, int signal) override;
};

}  // namespace platform::posix
