// Copying, and moving objects across the Core Foundation boundary.
#pragma once

#include <objc/NSObject.h>
#include <CoreFoundation/CoreFoundation.h>
#include <Foundation/NSObjCRuntime.h>

typedef struct _NSZone NSZone;
@class NSCoder;

NS_ASSUME_NONNULL_BEGIN

@protocol NSCopying
- (id)copyWithZone:(nullable NSZone*)zone;
@end

// Hands an object to Core Foundation with a +1 reference the caller must CFRelease.
NS_INLINE CFTypeRef _Nullable CFBridgingRetain(id _Nullable object) {
    return (__bridge_retained CFTypeRef)object;
}

// Takes a +1 Core Foundation reference over into ARC's care.
NS_INLINE id _Nullable CFBridgingRelease(CFTypeRef _Nullable object) {
    return (__bridge_transfer id)object;
}

NS_ASSUME_NONNULL_END
