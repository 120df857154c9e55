// The wall clock and pausing the calling thread, so that waits can run on scripted time in tests.
#pragma once

#include <chrono>

namespace platform {

class Clock {
public:
    using Seconds = std::chrono::duration<double>;

    virtual ~Clock() = default;

    // The current date and time.
    virtual std::chrono::system_clock::time_point now() = 0;

    // Blocks the calling thread for `interval`.
    virtual void sleepFor(Seconds interval) = 0;
};

}  // namespace platform
