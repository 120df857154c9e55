// Cells: the objects that draw a control's content, such as a text field's text.
#pragma once

#include <AppKit/AppKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSCell : NSObject <NSCopying>
// YES ends the last line that fits with an ellipsis when text is left over; it takes effect with a
// line break mode that wraps.
@property BOOL truncatesLastVisibleLine;
@end

NS_ASSUME_NONNULL_END
