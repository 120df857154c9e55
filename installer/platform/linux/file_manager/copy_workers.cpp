#include "platform/linux/file_manager/copy_workers.h"

namespace platform::linux_backend {

CopyWorkers::CopyWorkers(std::size_t count, std::size_t capacity) : capacity_(capacity) {
    for (std::size_t i = 0; i < count; ++i) threads_.emplace_back([this] { work(); });
}

CopyWorkers::~CopyWorkers() {
    {
        std::lock_guard lock(mutex_);
        closing_ = true;
    }
    changed_.notify_all();
    for (std::thread& thread : threads_) thread.join();
}

void CopyWorkers::submit(Job job) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return queue_.size() < capacity_; });
    queue_.push_back(std::move(job));
    lock.unlock();
    changed_.notify_all();
}

void CopyWorkers::finish() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return queue_.empty() && running_ == 0; });
}

void CopyWorkers::work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return closing_ || !queue_.empty(); });
        if (queue_.empty()) return;
        Job job = std::move(queue_.front());
        queue_.pop_front();
        ++running_;
        lock.unlock();
        changed_.notify_all();
        job();
        lock.lock();
        --running_;
        changed_.notify_all();
    }
}

}  // namespace platform::linux_backend
