#include "platform/macos/clock.h"

#import <Foundation/Foundation.h>

namespace platform::macos {

std::chrono::system_clock::time_point MacClock::now() {
    @autoreleasepool {
        const std::chrono::duration<double> sinceEpoch(NSDate.date.timeIntervalSince1970);
        return std::chrono::system_clock::time_point(
            std::chrono::duration_cast<std::chrono::system_clock::duration>(sinceEpoch));
    }
}

void MacClock::sleepFor(Seconds interval) {
    if (interval > Seconds::zero()) [NSThread sleepForTimeInterval:interval.count()];
}

}  // namespace platform::macos
