// Responders and views: the rectangles a window is built from. Frames are in the containing
// view's coordinates, origin at its bottom-left corner, y growing upwards.
#pragma once

#include <AppKit/AppKitDefines.h>

@class NSWindow;

NS_ASSUME_NONNULL_BEGIN

@interface NSResponder : NSObject
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@end

@interface NSView : NSResponder
- (instancetype)initWithFrame:(NSRect)frame NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@property NSRect frame;
@property (nullable, readonly, weak) NSView* superview;
@property (copy) NSArray<__kindof NSView*>* subviews;
@property (nullable, readonly, weak) NSWindow* window;
// The view keeps `view` alive and draws it in front of the views added before it.
- (void)addSubview:(NSView*)view;
- (void)removeFromSuperview;
@end

NS_ASSUME_NONNULL_END
