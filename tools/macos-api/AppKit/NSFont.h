// The system font at a size and weight.
#pragma once

#include <AppKit/AppKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

typedef CGFloat NSFontWeight;
APPKIT_EXTERN const NSFontWeight NSFontWeightLight;
APPKIT_EXTERN const NSFontWeight NSFontWeightRegular;
APPKIT_EXTERN const NSFontWeight NSFontWeightMedium;
APPKIT_EXTERN const NSFontWeight NSFontWeightSemibold;
APPKIT_EXTERN const NSFontWeight NSFontWeightBold;

typedef CGFloat NSFontWidth;
APPKIT_EXTERN const NSFontWidth NSFontWidthStandard MACOS_INTRODUCED(13.0);

@interface NSFont : NSObject <NSCopying>
+ (NSFont*)systemFontOfSize:(CGFloat)size;
+ (NSFont*)systemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight;
+ (NSFont*)systemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight width:(NSFontWidth)width
    MACOS_INTRODUCED(13.0);
@property (readonly) CGFloat pointSize;
@end

NS_ASSUME_NONNULL_END
