// Top-level windows.
#pragma once

#include <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(NSUInteger, NSWindowStyleMask) {
    NSWindowStyleMaskBorderless = 0,
    NSWindowStyleMaskTitled = 1 << 0,
    NSWindowStyleMaskClosable = 1 << 1,
    NSWindowStyleMaskMiniaturizable = 1 << 2,
    NSWindowStyleMaskResizable = 1 << 3,
};
static const NSWindowStyleMask NSTitledWindowMask
    MACOS_DEPRECATED("10.12", "NSWindowStyleMaskTitled") = NSWindowStyleMaskTitled;
static const NSWindowStyleMask NSClosableWindowMask
    MACOS_DEPRECATED("10.12", "NSWindowStyleMaskClosable") = NSWindowStyleMaskClosable;
static const NSWindowStyleMask NSMiniaturizableWindowMask
    MACOS_DEPRECATED("10.12", "NSWindowStyleMaskMiniaturizable") = NSWindowStyleMaskMiniaturizable;
static const NSWindowStyleMask NSResizableWindowMask
    MACOS_DEPRECATED("10.12", "NSWindowStyleMaskResizable") = NSWindowStyleMaskResizable;

typedef NS_ENUM(NSUInteger, NSBackingStoreType) {
    NSBackingStoreRetained MACOS_DEPRECATED("10.13", "NSBackingStoreBuffered") = 0,
    NSBackingStoreNonretained MACOS_DEPRECATED("10.13", "NSBackingStoreBuffered") = 1,
    NSBackingStoreBuffered = 2,
};

@protocol NSWindowDelegate <NSObject>
@optional
- (BOOL)windowShouldClose:(NSWindow*)sender;
- (void)windowWillClose:(NSNotification*)notification;
@end

@interface NSWindow : NSResponder
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)defer NS_DESIGNATED_INITIALIZER;
@property (copy) NSString* title;
@property NSWindowStyleMask styleMask;
// YES (the default) frees the window when it is closed, even while something still refers to it.
@property (getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property (nullable, strong) __kindof NSView* contentView;
@property (nullable, weak) id<NSWindowDelegate> delegate;
@property (readonly) NSRect frame;
@property (readonly, getter=isVisible) BOOL visible;
- (void)center;
- (void)makeKeyAndOrderFront:(nullable id)sender;
- (void)orderOut:(nullable id)sender;
- (void)close;
@end

NS_ASSUME_NONNULL_END
