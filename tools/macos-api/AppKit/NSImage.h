// Images, such as the application's icon, and the views that show one.
#pragma once

#include <AppKit/NSControl.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString* NSImageName;
APPKIT_EXTERN NSImageName const NSImageNameApplicationIcon;

@interface NSImage : NSObject <NSCopying>
+ (nullable NSImage*)imageNamed:(NSImageName)name;
+ (nullable instancetype)imageWithSymbolName:(NSString*)name variableValue:(double)value
    MACOS_INTRODUCED(13.0);
- (nullable instancetype)initWithContentsOfURL:(NSURL*)url;
@property NSSize size;
@end

typedef NS_ENUM(NSUInteger, NSImageScaling) {
    NSImageScaleProportionallyDown = 0,
    NSImageScaleAxesIndependently,
    NSImageScaleNone,
    NSImageScaleProportionallyUpOrDown,
    NSScaleProportionally MACOS_DEPRECATED("10.10", "NSImageScaleProportionallyDown") = 0,
    NSScaleToFit MACOS_DEPRECATED("10.10", "NSImageScaleAxesIndependently"),
    NSScaleNone MACOS_DEPRECATED("10.10", "NSImageScaleNone"),
};

@interface NSImageView : NSControl
+ (instancetype)imageViewWithImage:(NSImage*)image;
@property (nullable, strong) NSImage* image;
@property NSImageScaling imageScaling;
@end

NS_ASSUME_NONNULL_END
