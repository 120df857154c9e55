// The dispatch queues on Linux.
//
// The main queue is the Qt event loop of the main thread: tasks are posted to the Qt application
// object (or, before there is one, to an object made on the main thread with this service) and
// run between its events, in the order they were posted, once the loop runs.
// Delayed tasks keep a deadline on the monotonic clock, taken when they are submitted, and are
// timed by the event loop. The global queue starts one background thread per task, as a concurrent
// queue may. Needs only Qt Core: no window system.
#pragma once

#include <memory>

#include "platform/dispatch.h"

class QObject;

namespace platform::linux_backend {

class LinuxDispatch final : public Dispatch {
public:
    // Made on the main thread (the one that will run the event loop), as the backend's services are.
    LinuxDispatch();
    ~LinuxDispatch() override;

    void mainAsync(Task task) override;
    void mainAsyncAfter(std::chrono::duration<double> delay, Task task) override;
    void globalUserInitiatedAsync(Task task) override;

private:
    QObject* mainThreadReceiver() const;

    std::unique_ptr<QObject> receiverBeforeApplication_;
};

}  // namespace platform::linux_backend
