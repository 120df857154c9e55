// Foundation's basic types and the macros its declarations are written with.
#pragma once

#include <objc/objc.h>
#include <macos_availability.h>

#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define NS_DESIGNATED_INITIALIZER __attribute__((objc_designated_initializer))
#define NS_UNAVAILABLE __attribute__((unavailable))
#define NS_RETURNS_INNER_POINTER __attribute__((objc_returns_inner_pointer))
#define NS_FORMAT_FUNCTION(formatIndex, firstArgument) \
    __attribute__((format(__NSString__, formatIndex, firstArgument)))
#define NS_INLINE static inline

#if defined(__cplusplus)
#define FOUNDATION_EXPORT extern "C"
#else
#define FOUNDATION_EXPORT extern
#endif

// A fixed-type enumeration. In C++ an options type is the integer type itself, so that A | B, an
// integer, converts back to it.
#define NS_ENUM(type, name) enum name : type name; enum name : type
#if defined(__cplusplus)
#define NS_OPTIONS(type, name) type name; enum : type
#else
#define NS_OPTIONS(type, name) enum name : type name; enum name : type
#endif

typedef long NSInteger;
typedef unsigned long NSUInteger;
static const NSInteger NSNotFound = __LONG_MAX__;

typedef double NSTimeInterval;

typedef NS_ENUM(NSInteger, NSComparisonResult) {
    NSOrderedAscending = -1,
    NSOrderedSame = 0,
    NSOrderedDescending = 1,
};
