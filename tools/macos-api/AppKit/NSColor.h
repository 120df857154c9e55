// Named colours that follow the system appearance.
#pragma once

#include <AppKit/AppKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSColor : NSObject <NSCopying>
@property (class, strong, readonly) NSColor* labelColor;
@property (class, strong, readonly) NSColor* secondaryLabelColor;
@property (class, strong, readonly) NSColor* tertiaryLabelColor;
@property (class, strong, readonly) NSColor* quinaryLabelColor MACOS_INTRODUCED(14.0);
@property (class, strong, readonly) NSColor* systemFillColor MACOS_INTRODUCED(14.0);
@end

NS_ASSUME_NONNULL_END
