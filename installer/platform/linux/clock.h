// The clock on Linux: the wall clock and thread sleeping of the C++ standard library.
#pragma once

#include "platform/clock.h"

namespace platform::linux_backend {

class LinuxClock final : public Clock {
public:
    std::chrono::system_clock::time_point now() override;
    void sleepFor(Seconds interval) override;
};

}  // namespace platform::linux_backend
