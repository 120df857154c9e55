// Controls: views that show a value, such as text fields, labels and buttons, and how their text
// is aligned and broken into lines.
#pragma once

#include <AppKit/NSCell.h>
#include <AppKit/NSColor.h>
#include <AppKit/NSFont.h>
#include <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

// Centred and right alignment have different values on Apple and on Intel processors: code names
// them, never their numbers.
typedef NS_ENUM(NSInteger, NSTextAlignment) {
    NSTextAlignmentLeft = 0,
#if defined(__aarch64__) || defined(__arm64__)
    NSTextAlignmentCenter = 1,
    NSTextAlignmentRight = 2,
#else
    NSTextAlignmentRight = 1,
    NSTextAlignmentCenter = 2,
#endif
    NSTextAlignmentJustified = 3,
    NSTextAlignmentNatural = 4,
};
static const NSTextAlignment NSLeftTextAlignment
    MACOS_DEPRECATED("10.12", "NSTextAlignmentLeft") = NSTextAlignmentLeft;
static const NSTextAlignment NSRightTextAlignment
    MACOS_DEPRECATED("10.12", "NSTextAlignmentRight") = NSTextAlignmentRight;
static const NSTextAlignment NSCenterTextAlignment
    MACOS_DEPRECATED("10.12", "NSTextAlignmentCenter") = NSTextAlignmentCenter;
static const NSTextAlignment NSNaturalTextAlignment
    MACOS_DEPRECATED("10.12", "NSTextAlignmentNatural") = NSTextAlignmentNatural;

typedef NS_ENUM(NSInteger, NSLineBreakMode) {
    NSLineBreakByWordWrapping = 0,
    NSLineBreakByCharWrapping,
    NSLineBreakByClipping,
    NSLineBreakByTruncatingHead,
    NSLineBreakByTruncatingTail,
    NSLineBreakByTruncatingMiddle,
};

typedef NS_ENUM(NSInteger, NSTextInputTraitType) {
    NSTextInputTraitTypeDefault,
    NSTextInputTraitTypeNo,
    NSTextInputTraitTypeYes,
};

@interface NSControl : NSView
@property (nullable, strong) __kindof NSCell* cell;
@property (copy) NSString* stringValue;
@property (nullable, strong) NSFont* font;
@property NSTextAlignment alignment;
@property NSLineBreakMode lineBreakMode;
@property (getter=isEnabled) BOOL enabled;
- (void)sizeToFit;
@end

@interface NSTextField : NSControl
// A non-editable, non-selectable label on one line, without border or background.
+ (instancetype)labelWithString:(NSString*)stringValue;
+ (instancetype)wrappingLabelWithString:(NSString*)stringValue;
@property (nullable, copy) NSColor* textColor;
@property (getter=isEditable) BOOL editable;
@property (getter=isSelectable) BOOL selectable;
// 0 means no limit.
@property NSInteger maximumNumberOfLines;
@property NSTextInputTraitType inlinePredictionType MACOS_INTRODUCED(14.0);
@end

@interface NSButton : NSControl
@property (copy) NSString* title;
@end

NS_ASSUME_NONNULL_END
