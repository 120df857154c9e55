// Threads: which one is running, and pausing it.
#pragma once

#include <Foundation/NSDate.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSThread : NSObject
@property (class, readonly) BOOL isMainThread;
+ (void)sleepForTimeInterval:(NSTimeInterval)interval;
+ (void)sleepUntilDate:(NSDate*)date;
@end

NS_ASSUME_NONNULL_END
