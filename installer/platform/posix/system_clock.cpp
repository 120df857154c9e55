#include "platform/posix/system_clock.h"

#include <thread>

namespace platform::posix {

std::chrono::system_clock::time_point SystemClock::now() { return std::chrono::system_clock::now(); }

void SystemClock::sleepFor(Seconds interval) { std::this_thread::sleep_for(interval); }

}  // namespace platform::posix
