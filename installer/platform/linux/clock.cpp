#include "platform/linux/clock.h"

#include <thread>

namespace platform::linux_backend {

std::chrono::system_clock::time_point LinuxClock::now() { return std::chrono::system_clock::now(); }

void LinuxClock::sleepFor(Seconds interval) { std::this_thread::sleep_for(interval); }

}  // namespace platform::linux_backend
