// The dispatch queues on libdispatch: the main queue, which AppKit's event loop drains on the main
// thread, and the global queue of the user-initiated quality-of-service class.
//
// Each task is copied into the block that runs it. A task that throws ends the process where it
// runs, before the exception could unwind through the queue's own frames.
#pragma once

#include "platform/dispatch.h"

namespace platform::macos {

class MacDispatch final : public Dispatch {
public:
    void mainAsync(Task task) override;
    // Timed by dispatch_time, on a clock that does not follow changes of the wall-clock time; a
    // negative delay counts as none.
    void mainAsyncAfter(std::chrono::duration<double> delay, Task task) override;
    void globalUserInitiatedAsync(Task task) override;
};

}  // namespace platform::macos
