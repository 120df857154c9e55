// The AppKit side that every view kind shares: an NSView whose frame is the ui frame as it stands,
// since AppKit's views also count from the bottom-left corner of their superview with y up.
//
// A view class of this backend derives from its ui interface through NativeViewOf and names its
// NSView in nsView(). Each holds its NSView strongly; a superview holds its subviews, a window its
// content view. Main thread only.
#pragma once

#include <memory>

#include "platform/ui/view.h"

#ifdef __OBJC__
@class NSView;
#else
class NSView;
#endif

namespace platform::macos {

class NativeView {
public:
    virtual ~NativeView() = default;

    virtual NSView* nsView() const = 0;

    // The NSView behind a view made by this backend. Any other view is a programming error: it
    // ends the process with a message.
    static NSView* of(ui::View& view);

protected:
    ui::Rect nativeFrame() const;
    void setNativeFrame(const ui::Rect& frame);
    void addNativeSubview(ui::View& subview);
};

// Implements the View part of a ui interface on the NSView of NativeView.
template <class Interface>
class NativeViewOf : public Interface, public NativeView {
public:
    ui::Rect frame() const override { return nativeFrame(); }
    void setFrame(const ui::Rect& frame) override { setNativeFrame(frame); }
    void addSubview(std::shared_ptr<ui::View> subview) override { addNativeSubview(*subview); }
};

// A plain NSView with `frame`.
std::shared_ptr<ui::View> makeView(const ui::Rect& frame);

}  // namespace platform::macos
