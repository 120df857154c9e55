// A log of what scripted services were asked to do, in order, shared across threads. Each entry
// also notes whether it was made on the thread that created the log (the test's main thread).
#pragma once

#include <algorithm>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace testing_support {

class EventLog {
public:
    void add(std::string entry) {
        std::lock_guard lock(mutex_);
        entries_.push_back(std::move(entry));
        if (std::this_thread::get_id() != mainThread_) offMainEntries_.push_back(entries_.back());
    }

    std::vector<std::string> entries() const {
        std::lock_guard lock(mutex_);
        return entries_;
    }

    // Entries made on another thread than the test's own.
    std::vector<std::string> offMainEntries() const {
        std::lock_guard lock(mutex_);
        return offMainEntries_;
    }

    // Where `entry` first appears; -1 when it never does.
    long indexOf(const std::string& entry) const {
        std::lock_guard lock(mutex_);
        auto found = std::find(entries_.begin(), entries_.end(), entry);
        return found == entries_.end() ? -1 : found - entries_.begin();
    }

    long count(const std::string& entry) const {
        std::lock_guard lock(mutex_);
        return std::count(entries_.begin(), entries_.end(), entry);
    }

private:
    mutable std::mutex mutex_;
    const std::thread::id mainThread_ = std::this_thread::get_id();
    std::vector<std::string> entries_;
    std::vector<std::string> offMainEntries_;
};

}  // namespace testing_support
