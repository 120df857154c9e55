#include "platform/macos/dispatch.h"

#import <Foundation/Foundation.h>

#include <algorithm>
#include <cstdint>

namespace platform::macos {
namespace {

void runTask(const Dispatch::Task& task) noexcept { task(); }

dispatch_block_t blockRunning(Dispatch::Task task) {
    return ^{
      @autoreleasepool {
          runTask(task);
      }
    };
}

}  // namespace

void MacDispatch::mainAsync(Task task) { dispatch_async(dispatch_get_main_queue(), blockRunning(std::move(task))); }

void MacDispatch::mainAsyncAfter(std::chrono::duration<double> delay, Task task) {
    const auto nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(
        std::max(delay, std::chrono::duration<double>::zero()));
    dispatch_after(dispatch_time(DISPATCH_TIME_NOW, static_cast<std::int64_t>(nanoseconds.count())),
                   dispatch_get_main_queue(), blockRunning(std::move(task)));
}

void MacDispatch::globalUserInitiatedAsync(Task task) {
    dispatch_async(dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0), blockRunning(std::move(task)));
}

}  // namespace platform::macos
