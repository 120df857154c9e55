// Points in wall-clock time.
#pragma once

#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSDate : NSObject <NSCopying>
+ (instancetype)date;
+ (instancetype)dateWithTimeIntervalSinceNow:(NSTimeInterval)seconds;
@property (readonly) NSTimeInterval timeIntervalSinceNow;
@property (readonly) NSTimeInterval timeIntervalSince1970;
- (NSTimeInterval)timeIntervalSinceDate:(NSDate*)other;
- (NSComparisonResult)compare:(NSDate*)other;
@end

NS_ASSUME_NONNULL_END
