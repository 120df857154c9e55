// Dispatch queues a test drains by hand: main tasks wait until `runMainTasks`, delayed ones keep
// their delay, and each background task runs on a real thread of its own when the test says so.
#pragma once

#include <deque>
#include <string>
#include <thread>
#include <vector>

#include "platform/dispatch.h"
#include "support/event_log.h"

namespace testing_support {

class ScriptedDispatch final : public platform::Dispatch {
public:
    struct Delayed {
        double seconds;
        Task task;
    };

    explicit ScriptedDispatch(EventLog& log) : log_(log) {}

    void mainAsync(Task task) override {
        log_.add("dispatch.mainAsync");
        main_.push_back(std::move(task));
    }
    void mainAsyncAfter(std::chrono::duration<double> delay, Task task) override {
        log_.add("dispatch.mainAsyncAfter " + std::to_string(delay.count()));
        delayed_.push_back({delay.count(), std::move(task)});
    }
    void globalUserInitiatedAsync(Task task) override {
        log_.add("dispatch.globalUserInitiatedAsync");
        background_.push_back(std::move(task));
    }

    // Runs the waiting background tasks, each on a thread of its own, one after the other.
    void runBackgroundTasks() {
        while (!background_.empty()) {
            Task task = std::move(background_.front());
            background_.pop_front();
            std::thread(std::move(task)).join();
        }
    }

    // Runs main tasks in submission order, also those they submit, until none is left.
    void runMainTasks() {
        while (!main_.empty()) {
            Task task = std::move(main_.front());
            main_.pop_front();
            task();
        }
    }

    // Runs the delayed tasks (on this thread, as the main queue would) and forgets them.
    void runDelayedTasks() {
        std::vector<Delayed> due = std::move(delayed_);
        delayed_.clear();
        for (Delayed& item : due) item.task();
    }

    std::size_t waitingBackgroundTasks() const { return background_.size(); }
    const std::vector<Delayed>& delayed() const { return delayed_; }

private:
    EventLog& log_;
    std::deque<Task> main_;
    std::deque<Task> background_;
    std::vector<Delayed> delayed_;
};

}  // namespace testing_support
