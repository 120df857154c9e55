// Progress bars and spinners.
#pragma once

#include <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSUInteger, NSProgressIndicatorStyle) {
    NSProgressIndicatorStyleBar = 0,
    NSProgressIndicatorStyleSpinning = 1,
};
static const NSProgressIndicatorStyle NSProgressIndicatorBarStyle
    MACOS_DEPRECATED("10.14", "NSProgressIndicatorStyleBar") = NSProgressIndicatorStyleBar;
static const NSProgressIndicatorStyle NSProgressIndicatorSpinningStyle
    MACOS_DEPRECATED("10.14", "NSProgressIndicatorStyleSpinning") = NSProgressIndicatorStyleSpinning;

@interface NSProgressIndicator : NSView
@property NSProgressIndicatorStyle style;
@property (getter=isIndeterminate) BOOL indeterminate;
@property double doubleValue;
// YES: the indicator animates on a thread of its own, so it keeps moving while the main thread is
// busy.
@property BOOL usesThreadedAnimation;
// Starting may come before the indicator is in a window; it animates once shown.
- (void)startAnimation:(nullable id)sender;
- (void)stopAnimation:(nullable id)sender;
@end

NS_ASSUME_NONNULL_END
