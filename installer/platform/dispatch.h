// Work queues: the main queue, which runs on the main thread between the event loop's events, and
// the global background queue for user-initiated work.
#pragma once

#include <chrono>
#include <functional>

namespace platform {

class Dispatch {
public:
    using Task = std::function<void()>;

    virtual ~Dispatch() = default;

    // Runs `task` on the main thread later, in submission order. Callable from any thread.
    virtual void mainAsync(Task task) = 0;

    // Runs `task` on the main thread once `delay` has passed on a monotonic clock (one that does not
    // follow changes of the wall-clock time), the deadline taken at the moment of the call.
    virtual void mainAsyncAfter(std::chrono::duration<double> delay, Task task) = 0;

    // Runs `task` on a background thread of the user-initiated class and returns at once.
    virtual void globalUserInitiatedAsync(Task task) = 0;
};

}  // namespace platform
