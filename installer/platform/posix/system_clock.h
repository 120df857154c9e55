// The wall clock and thread sleeping from the C++ standard library. Shared by both backends.
#pragma once

#include "platform/clock.h"

namespace platform::posix {

class SystemClock final : public Clock {
public:
    std::chrono::system_clock::time_point now() override;
    void sleepFor(Seconds interval) override;
};

}  // namespace platform::posix
