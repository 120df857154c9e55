// A few threads that run queued jobs, with a bounded queue so that a producer far ahead of
// them waits instead of piling up work in memory.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace platform::linux_backend {

class CopyWorkers {
public:
    using Job = std::function<void()>;

    // Starts `count` threads; `capacity` jobs may wait before `submit` blocks.
    CopyWorkers(std::size_t count, std::size_t capacity);
    // Runs what is queued, then joins the threads.
    ~CopyWorkers();
    CopyWorkers(const CopyWorkers&) = delete;
    CopyWorkers& operator=(const CopyWorkers&) = delete;

    // Queues `job`, waiting while the queue is full. Call from one thread at a time.
    void submit(Job job);

    // Blocks until every submitted job has run.
    void finish();

private:
    void work();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Job> queue_;
    std::size_t capacity_;
    std::size_t running_ = 0;
    bool closing_ = false;
    std::vector<std::thread> threads_;
};

}  // namespace platform::linux_backend
