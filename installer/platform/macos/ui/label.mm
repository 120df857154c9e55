#include "platform/macos/ui/label.h"

#import <AppKit/AppKit.h>

#include "platform/macos/ns_string.h"
#include "platform/macos/ui/view.h"

namespace platform::macos {
namespace {

// The regular weight is the plain system font; the others name their weight.
NSFont* systemFont(const ui::Font& font) {
    switch (font.weight) {
        case ui::FontWeight::Regular: return [NSFont systemFontOfSize:font.size];
        case ui::FontWeight::Semibold:
            return [NSFont systemFontOfSize:font.size weight:NSFontWeightSemibold];
    }
    return [NSFont systemFontOfSize:font.size];
}

NSColor* namedColor(ui::Color color) {
    switch (color) {
        case ui::Color::secondaryLabelColor: return NSColor.secondaryLabelColor;
    }
    return NSColor.secondaryLabelColor;
}

// By name: centred alignment has different values on Apple and Intel processors.
NSTextAlignment nativeAlignment(ui::TextAlignment alignment) {
    switch (alignment) {
        case ui::TextAlignment::Center: return NSTextAlignmentCenter;
    }
    return NSTextAlignmentCenter;
}

NSLineBreakMode nativeLineBreakMode(ui::LineBreakMode mode) {
    switch (mode) {
        case ui::LineBreakMode::ByWordWrapping: return NSLineBreakByWordWrapping;
    }
    return NSLineBreakByWordWrapping;
}

class NativeLabel final : public NativeViewOf<ui::Label> {
public:
    explicit NativeLabel(const std::string& text)
        : field_([NSTextField labelWithString:toNSString(text)]) {
        field_.cell.truncatesLastVisibleLine = YES;
    }

    NSView* nsView() const override { return field_; }

    std::string stringValue() const override { return toStdString(field_.stringValue); }
    void setStringValue(const std::string& text) override { field_.stringValue = toNSString(text); }
    void setFont(const ui::Font& font) override { field_.font = systemFont(font); }
    void setTextColor(ui::Color color) override { field_.textColor = namedColor(color); }
    void setAlignment(ui::TextAlignment alignment) override {
        field_.alignment = nativeAlignment(alignment);
    }
    void setLineBreakMode(ui::LineBreakMode mode) override {
        field_.lineBreakMode = nativeLineBreakMode(mode);
    }
    void setMaximumNumberOfLines(int lines) override { field_.maximumNumberOfLines = lines; }

private:
    NSTextField* const field_;
};

}  // namespace

std::shared_ptr<ui::Label> makeLabel(const std::string& text) {
    return std::make_shared<NativeLabel>(text);
}

}  // namespace platform::macos
