// Bytes as an object, such as what a pipe delivers.
#pragma once

#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSData : NSObject <NSCopying>
@property (readonly) NSUInteger length;
@property (readonly) const void* bytes NS_RETURNS_INNER_POINTER;
+ (instancetype)data;
+ (instancetype)dataWithBytes:(nullable const void*)bytes length:(NSUInteger)length;
@end

@interface NSMutableData : NSData
- (void)appendData:(NSData*)other;
@end

NS_ASSUME_NONNULL_END
