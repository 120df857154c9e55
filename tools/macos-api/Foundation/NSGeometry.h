// Points, sizes and rectangles in points, as AppKit frames take them. On 64-bit systems AppKit's
// NS types are Core Graphics' CG types.
#pragma once

#include <Foundation/NSObjCRuntime.h>

typedef double CGFloat;

typedef struct CGPoint {
    CGFloat x;
    CGFloat y;
} CGPoint;

typedef struct CGSize {
    CGFloat width;
    CGFloat height;
} CGSize;

typedef struct CGRect {
    CGPoint origin;
    CGSize size;
} CGRect;

typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;

NS_INLINE NSSize NSMakeSize(CGFloat width, CGFloat height) {
    NSSize size = {width, height};
    return size;
}

NS_INLINE NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    NSRect rect = {{x, y}, {width, height}};
    return rect;
}

FOUNDATION_EXPORT const NSRect NSZeroRect;
