#include "platform/macos/ui/alert.h"

#import <AppKit/AppKit.h>

#include "platform/macos/ns_string.h"

namespace platform::macos {
namespace {

static_assert(ui::kAlertFirstButtonReturn == NSAlertFirstButtonReturn,
              "the portable responses are AppKit's own");

NSAlertStyle nativeStyle(ui::AlertStyle style) {
    switch (style) {
        case ui::AlertStyle::Warning: return NSAlertStyleWarning;
    }
    return NSAlertStyleWarning;
}

class NativeAlert final : public ui::Alert {
public:
    NativeAlert() : alert_([[NSAlert alloc] init]) {}

    void setMessageText(const std::string& text) override { alert_.messageText = toNSString(text); }
    void setInformativeText(const std::string& text) override {
        alert_.informativeText = toNSString(text);
    }
    void setAlertStyle(ui::AlertStyle style) override { alert_.alertStyle = nativeStyle(style); }
    void addButtonWithTitle(const std::string& title) override {
        [alert_ addButtonWithTitle:toNSString(title)];
    }
    ui::ModalResponse runModal() override { return [alert_ runModal]; }

private:
    NSAlert* const alert_;
};

}  // namespace

std::shared_ptr<ui::Alert> makeAlert() { return std::make_shared<NativeAlert>(); }

}  // namespace platform::macos
