#include "platform/linux/dispatch.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QObject>
#include <QTimer>

#include <thread>

namespace platform::linux_backend {
namespace {

using MonotonicClock = std::chrono::steady_clock;

// Whole milliseconds until `deadline`, rounded up so a task never runs before it; 0 when past.
int millisecondsUntil(MonotonicClock::time_point deadline) {
    auto remaining = std::chrono::ceil<std::chrono::milliseconds>(deadline - MonotonicClock::now());
    return remaining.count() > 0 ? static_cast<int>(remaining.count()) : 0;
}

}  // namespace

LinuxDispatch::LinuxDispatch() : receiverBeforeApplication_(std::make_unique<QObject>()) {}

LinuxDispatch::~LinuxDispatch() = default;

QObject* LinuxDispatch::mainThreadReceiver() const {
    QCoreApplication* application = QCoreApplication::instance();
    return application != nullptr ? application : receiverBeforeApplication_.get();
}

void LinuxDispatch::mainAsync(Task task) {
    // Events posted to objects of one thread are delivered in the order they were posted, from any
    // thread, whichever of that thread's objects receives them.
    QMetaObject::invokeMethod(mainThreadReceiver(), std::move(task), Qt::QueuedConnection);
}

void LinuxDispatch::mainAsyncAfter(std::chrono::duration<double> delay, Task task) {
    auto deadline = MonotonicClock::now() +
                    std::chrono::duration_cast<MonotonicClock::duration>(delay);
    mainAsync([deadline, task = std::move(task)]() mutable {
        QTimer::singleShot(millisecondsUntil(deadline), Qt::PreciseTimer, std::move(task));
    });
}

void LinuxDispatch::globalUserInitiatedAsync(Task task) {
    std::thread(std::move(task)).detach();
}

}  // namespace platform::linux_backend
