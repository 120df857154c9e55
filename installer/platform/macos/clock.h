// The wall clock and pausing the calling thread, from Foundation's dates and threads.
#pragma once

#include "platform/clock.h"

namespace platform::macos {

class MacClock final : public Clock {
public:
    std::chrono::system_clock::time_point now() override;
    // A negative interval pauses not at all.
    void sleepFor(Seconds interval) override;
};

}  // namespace platform::macos
