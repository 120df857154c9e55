// A window toolkit that draws nothing, for unit tests of the application. The toolkit itself plays
// the application, the one window and the alert; the views it makes keep what they are told. All
// of them keep their state for the test to read, and the calls whose order matters go into the
// scripted system's log: "window shown", "activated", "text <status>", "bar start", "bar stop",
// "alert <message>: <informative text> (<style>) [<button>…]" (run modally; the user presses its
// first button at once), "terminate". A call made while a background task runs fails the test: the window belongs to
// the main thread.
#pragma once

#include <gtest/gtest.h>

#include "platform/ui/toolkit.h"
#include "platform/testing/scripted_system.h"

namespace platform::ui {
inline void PrintTo(const Rect& r, std::ostream* o) { *o << r.x << "," << r.y << " " << r.width << "x" << r.height; }
}  // namespace platform::ui

namespace testing_support {

namespace ui = platform::ui;

inline void noteOnMainThread(ScriptedSystem& system, const std::string& entry) {
    if (system.inBackground()) ADD_FAILURE() << "the window was touched off the main thread: " << entry;
    system.add(entry);
}

template <class Interface>
class ScriptedViewOf : public Interface {
public:
    explicit ScriptedViewOf(ScriptedSystem& system, ui::Rect frame = {}) : system_(system), frame_(frame) {}
    ui::Rect frame() const override { return frame_; }
    void setFrame(const ui::Rect& frame) override { frame_ = frame; }
    void addSubview(std::shared_ptr<ui::View> view) override { subviews.push_back(std::move(view)); }

    std::vector<std::shared_ptr<ui::View>> subviews;

protected:
    void note(const std::string& entry) { noteOnMainThread(system_, entry); }

private:
    ScriptedSystem& system_;
    ui::Rect frame_;
};

class ScriptedLabel final : public ScriptedViewOf<ui::Label> {
public:
    ScriptedLabel(ScriptedSystem& system, std::string text) : ScriptedViewOf(system), text(std::move(text)) {}
    std::string text;
    ui::Font font;
    std::optional<ui::Color> color;
    std::optional<ui::TextAlignment> alignment;
    std::optional<ui::LineBreakMode> lineBreakMode;
    int maximumLines = 0;

    std::string stringValue() const override { return text; }
    void setStringValue(const std::string& value) override { note("text " + (text = value)); }
    void setFont(const ui::Font& value) override { font = value; }
    void setTextColor(ui::Color value) override { color = value; }
    void setAlignment(ui::TextAlignment value) override { alignment = value; }
    void setLineBreakMode(ui::LineBreakMode value) override { lineBreakMode = value; }
    void setMaximumNumberOfLines(int value) override { maximumLines = value; }
};

class ScriptedImageView final : public ScriptedViewOf<ui::ImageView> {
public:
    using ScriptedViewOf::ScriptedViewOf;
    std::shared_ptr<ui::Image> image;
    std::optional<ui::ImageScaling> scaling;

    void setImage(std::shared_ptr<ui::Image> value) override { image = std::move(value); }
    void setImageScaling(ui::ImageScaling value) override { scaling = value; }
};

class ScriptedBar final : public ScriptedViewOf<ui::ProgressIndicator> {
public:
    using ScriptedViewOf::ScriptedViewOf;
    std::optional<ui::ProgressIndicatorStyle> style;
    bool indeterminate = false;

    void setStyle(ui::ProgressIndicatorStyle value) override { style = value; }
    void setIndeterminate(bool value) override { indeterminate = value; }
    void startAnimation() override { note("bar start"); }
    void stopAnimation() override { note("bar stop"); }
};

class ScriptedToolkit final : public ui::Toolkit, public ui::Application,
                              public ui::Window, public ui::Alert {
public:
    explicit ScriptedToolkit(ScriptedSystem& system) : system_(system) {}

    const std::shared_ptr<ui::Image> icon = std::make_shared<ui::Image>();
    // The window: how it was made (content rectangle, style mask, backing, defer), then what it was
    // told (its title, "kept" or "released when closed", "centered"), and its content.
    std::string window;
    std::shared_ptr<ui::View> contentView;

    ui::Application& sharedApplication() override { return *this; }
    std::shared_ptr<ui::Window> makeWindow(const ui::Rect& content, unsigned style, ui::BackingStoreType backing,
                                           bool defer) override {
        window = ::testing::PrintToString(content) + " style " + std::to_string(style) + " backing " +
                 std::to_string(static_cast<int>(backing)) + (defer ? " deferred" : "");
        return std::shared_ptr<ui::Window>(this, [](ui::Window*) {});
    }
    std::shared_ptr<ui::View> makeView(const ui::Rect& frame) override {
        return std::make_shared<ScriptedViewOf<ui::View>>(system_, frame);
    }
    std::shared_ptr<ui::ImageView> makeImageView(const ui::Rect& frame) override {
        return std::make_shared<ScriptedImageView>(system_, frame);
    }
    std::shared_ptr<ui::Label> labelWithString(const std::string& text) override {
        return std::make_shared<ScriptedLabel>(system_, text);
    }
    std::shared_ptr<ui::ProgressIndicator> makeProgressIndicator() override { return std::make_shared<ScriptedBar>(system_); }
    std::shared_ptr<ui::Alert> makeAlert() override { return std::shared_ptr<ui::Alert>(this, [](auto*) {}); }

    void setActivationPolicy(ui::ActivationPolicy) override {}
    void setDelegate(ui::ApplicationDelegate*) override {}
    void run() override {}
    void terminate() override { noteOnMainThread(system_, "terminate"); }
    void activateIgnoringOtherApps(bool value) override {
        noteOnMainThread(system_, value ? "activated" : "activated unless another app is active");
    }
    std::shared_ptr<ui::Image> applicationIconImage() override { return icon; }

    void setTitle(const std::string& value) override { window += ", title " + value; }
    void setReleasedWhenClosed(bool value) override { window += value ? ", released when closed" : ", kept"; }
    void center() override { window += ", centered"; }
    void setContentView(std::shared_ptr<ui::View> value) override { contentView = std::move(value); }
    void makeKeyAndOrderFront() override { noteOnMainThread(system_, "window shown"); }

    void setMessageText(const std::string& text) override { alert_ += text; }
    void setInformativeText(const std::string& text) override { alert_ += ": " + text; }
    void setAlertStyle(ui::AlertStyle) override { alert_ += " (warning)"; }
    void addButtonWithTitle(const std::string& value) override { alert_ += " [" + value + "]"; }
    ui::ModalResponse runModal() override {
        noteOnMainThread(system_, "alert " + alert_);
        return ui::kAlertFirstButtonReturn;  // the user presses the first button at once
    }

private:
    ScriptedSystem& system_;
    std::string alert_;
};

}  // namespace testing_support
