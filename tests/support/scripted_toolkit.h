// A window toolkit that draws nothing, for unit tests of the application. The toolkit itself plays
// the application, the one window and the alert; the views it makes keep what they are told. All
// of them keep their state for the test to read, and the calls whose order matters go into the
// scripted system's log: "window shown", "activated", "text <status>", "bar start", "bar stop",
// "alert <message>: <informative text> (<style>) [<button>…]" (run modally; the user presses its
// first button at once), "terminate" (or "terminate later", when the delegate defers it),
// "reply <bool>". A call made while a background task runs fails the test: the window belongs to
// the main thread.
#pragma once

#include <gtest/gtest.h>

#include "platform/ui/toolkit.h"
#include "support/scripted_system.h"

namespace platform::ui {
inline void PrintTo(const Rect& r, std::ostream* out) {
    *out << r.x << "," << r.y << " " << r.width << "x" << r.height;
}
}  // namespace platform::ui

namespace testing_support {

inline void noteOnMainThread(ScriptedSystem& system, const std::string& entry) {
    if (system.inBackground()) ADD_FAILURE() << "the window was touched off the main thread: " << entry;
    system.add(entry);
}

template <class Interface>
class ScriptedViewOf : public Interface {
public:
    explicit ScriptedViewOf(ScriptedSystem& system, platform::ui::Rect frame = {}) : system_(system), frame_(frame) {}
    platform::ui::Rect frame() const override { return frame_; }
    void setFrame(const platform::ui::Rect& frame) override { frame_ = frame; }
    void addSubview(std::shared_ptr<platform::ui::View> view) override { subviews.push_back(std::move(view)); }

    std::vector<std::shared_ptr<platform::ui::View>> subviews;

protected:
    void note(const std::string& entry) { noteOnMainThread(system_, entry); }

private:
    ScriptedSystem& system_;
    platform::ui::Rect frame_;
};

class ScriptedLabel final : public ScriptedViewOf<platform::ui::Label> {
public:
    using ScriptedViewOf::ScriptedViewOf;
    std::string text;
    platform::ui::Font font;
    std::optional<platform::ui::Color> color;
    std::optional<platform::ui::TextAlignment> alignment;
    std::optional<platform::ui::LineBreakMode> lineBreakMode;
    int maximumLines = 0;

    std::string stringValue() const override { return text; }
    void setStringValue(const std::string& value) override { note("text " + (text = value)); }
    void setFont(const platform::ui::Font& value) override { font = value; }
    void setTextColor(platform::ui::Color value) override { color = value; }
    void setAlignment(platform::ui::TextAlignment value) override { alignment = value; }
    void setLineBreakMode(platform::ui::LineBreakMode value) override { lineBreakMode = value; }
    void setMaximumNumberOfLines(int value) override { maximumLines = value; }
};

class ScriptedImageView final : public ScriptedViewOf<platform::ui::ImageView> {
public:
    using ScriptedViewOf::ScriptedViewOf;
    std::shared_ptr<platform::ui::Image> image;
    std::optional<platform::ui::ImageScaling> scaling;

    void setImage(std::shared_ptr<platform::ui::Image> value) override { image = std::move(value); }
    void setImageScaling(platform::ui::ImageScaling value) override { scaling = value; }
};

class ScriptedBar final : public ScriptedViewOf<platform::ui::ProgressIndicator> {
public:
    using ScriptedViewOf::ScriptedViewOf;
    std::optional<platform::ui::ProgressIndicatorStyle> style;
    bool indeterminate = false;

    void setStyle(platform::ui::ProgressIndicatorStyle value) override { style = value; }
    void setIndeterminate(bool value) override { indeterminate = value; }
    void startAnimation() override { note("bar start"); }
    void stopAnimation() override { note("bar stop"); }
};

class ScriptedToolkit final : public platform::ui::Toolkit, public platform::ui::Application,
                              public platform::ui::Window, public platform::ui::Alert {
public:
    explicit ScriptedToolkit(ScriptedSystem& system) : system_(system) {}

    std::shared_ptr<ScriptedViewOf<platform::ui::View>> view;
    std::shared_ptr<ScriptedImageView> imageView;
    std::vector<std::shared_ptr<ScriptedLabel>> labels;  // in the order made
    std::shared_ptr<ScriptedBar> bar;
    const std::shared_ptr<platform::ui::Image> icon = std::make_shared<platform::ui::Image>();
    platform::ui::ApplicationDelegate* delegate = nullptr;
    // The window: how it was made (content rectangle, style mask, backing, defer), then what it was told.
    std::string window;
    std::shared_ptr<platform::ui::View> contentView;

    platform::ui::Application& sharedApplication() override { return *this; }
    std::shared_ptr<platform::ui::Window> makeWindow(const platform::ui::Rect& content, unsigned style,
                                                     platform::ui::BackingStoreType backing, bool defer) override {
        window = ::testing::PrintToString(content) + " style " + std::to_string(style) + " backing " +
                     std::to_string(static_cast<int>(backing)) + (defer ? " deferred" : "");
        return std::shared_ptr<platform::ui::Window>(this, [](platform::ui::Window*) {});
    }
    std::shared_ptr<platform::ui::View> makeView(const platform::ui::Rect& frame) override {
        return view = std::make_shared<ScriptedViewOf<platform::ui::View>>(system_, frame);
    }
    std::shared_ptr<platform::ui::ImageView> makeImageView(const platform::ui::Rect& frame) override {
        return imageView = std::make_shared<ScriptedImageView>(system_, frame);
    }
    std::shared_ptr<platform::ui::Label> labelWithString(const std::string& text) override {
        labels.push_back(std::make_shared<ScriptedLabel>(system_));
        labels.back()->text = text;
        return labels.back();
    }
    std::shared_ptr<platform::ui::ProgressIndicator> makeProgressIndicator() override {
        return bar = std::make_shared<ScriptedBar>(system_);
    }
    std::shared_ptr<platform::ui::Alert> makeAlert() override {
        return std::shared_ptr<platform::ui::Alert>(this, [](platform::ui::Alert*) {});
    }

    void setActivationPolicy(platform::ui::ActivationPolicy) override {}
    void setDelegate(platform::ui::ApplicationDelegate* value) override { delegate = value; }
    void run() override {}
    // Asks the delegate first, as the platform does.
    void terminate() override {
        bool later = delegate->applicationShouldTerminate(*this) == platform::ui::TerminateReply::TerminateLater;
        noteOnMainThread(system_, later ? "terminate later" : "terminate");
    }
    void replyToApplicationShouldTerminate(bool value) override {
        noteOnMainThread(system_, value ? "reply true" : "reply false");
    }
    void activateIgnoringOtherApps(bool value) override {
        noteOnMainThread(system_, value ? "activated" : "activated unless another app is active");
    }
    std::shared_ptr<platform::ui::Image> applicationIconImage() override { return icon; }

    void setTitle(const std::string& value) override { window += ", title " + value; }
    void setReleasedWhenClosed(bool value) override { window += value ? ", released when closed" : ", kept when closed"; }
    void center() override { window += ", centered"; }
    void setContentView(std::shared_ptr<platform::ui::View> value) override { contentView = std::move(value); }
    void makeKeyAndOrderFront() override { noteOnMainThread(system_, "window shown"); }

    void setMessageText(const std::string& text) override { alert_ += text; }
    void setInformativeText(const std::string& text) override { alert_ += ": " + text; }
    void setAlertStyle(platform::ui::AlertStyle value) override {
        alert_ += value == platform::ui::AlertStyle::Warning ? " (warning)" : " (not a warning)";
    }
    void addButtonWithTitle(const std::string& value) override { alert_ += " [" + value + "]"; }
    platform::ui::ModalResponse runModal() override {
        noteOnMainThread(system_, "alert " + alert_);
        return platform::ui::kAlertFirstButtonReturn;
    }

private:
    ScriptedSystem& system_;
    std::string alert_;
};

}  // namespace testing_support
