// The few Core Foundation types that meet Objective-C objects, so that passing an object where a
// CF reference is wanted needs its bridge cast, as it does on macOS.
#pragma once

#pragma clang assume_nonnull begin

#if defined(__cplusplus)
extern "C" {
#endif

typedef const void* CFTypeRef;
typedef long CFIndex;
typedef unsigned char Boolean;
typedef const struct __attribute__((objc_bridge(NSString))) __CFString* CFStringRef;
typedef const struct __attribute__((objc_bridge(NSURL))) __CFURL* CFURLRef;
typedef struct __attribute__((objc_bridge(NSError))) __CFError* CFErrorRef;

CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);
CFIndex CFStringGetLength(CFStringRef string);

#if defined(__cplusplus)
}
#endif

#pragma clang assume_nonnull end
