// A window toolkit that draws nothing: every object keeps its state for the test to read and logs
// each call, named after the object ("label 2.setStringValue ..."), into an EventLog.
#pragma once

#include <sstream>
#include <memory>
#include <string>
#include <vector>

#include "platform/ui/toolkit.h"
#include "support/event_log.h"

namespace testing_support {

// Its arguments written one after the other, as a stream writes them.
template <class... Parts>
std::string joined(const Parts&... parts) {
    std::ostringstream text;
    text << std::boolalpha;
    (text << ... << parts);
    return text.str();
}

inline std::string describe(const platform::ui::Rect& r) {
    return joined(r.x, ",", r.y, ",", r.width, ",", r.height);
}

template <class Interface>
class ScriptedViewOf : public Interface {
public:
    ScriptedViewOf(EventLog& log, std::string name) : log_(log), name_(std::move(name)) {}

    platform::ui::Rect frame() const override { return frame_; }
    void setFrame(const platform::ui::Rect& frame) override {
        frame_ = frame;
        note("setFrame " + describe(frame));
    }
    void addSubview(std::shared_ptr<platform::ui::View> subview) override {
        note("addSubview " + dynamic_cast<ScriptedViewOf<platform::ui::View>*>(subview.get())->name());
        subviews.push_back(std::move(subview));
    }

    const std::string& name() const { return name_; }
    std::vector<std::shared_ptr<platform::ui::View>> subviews;

protected:
    void note(const std::string& call) { log_.add(name_ + "." + call); }

private:
    EventLog& log_;
    std::string name_;
    platform::ui::Rect frame_;
};

// Every scripted view is one of these, so any view can be named and inspected.
class ScriptedView : public ScriptedViewOf<platform::ui::View> {
    using ScriptedViewOf::ScriptedViewOf;
};

template <class Interface>
class ScriptedViewKind : public Interface, public ScriptedView {
public:
    ScriptedViewKind(EventLog& log, std::string name) : ScriptedView(log, std::move(name)) {}
    platform::ui::Rect frame() const override { return ScriptedView::frame(); }
    void setFrame(const platform::ui::Rect& frame) override { ScriptedView::setFrame(frame); }
    void addSubview(std::shared_ptr<platform::ui::View> subview) override {
        ScriptedView::addSubview(std::move(subview));
    }
};

class ScriptedLabel final : public ScriptedViewKind<platform::ui::Label> {
public:
    using ScriptedViewKind::ScriptedViewKind;
    std::string text;
    platform::ui::Font font;
    std::optional<platform::ui::Color> color;
    std::optional<platform::ui::TextAlignment> alignment;
    std::optional<platform::ui::LineBreakMode> lineBreakMode;
    int maximumLines = 0;

    std::string stringValue() const override { return text; }
    void setStringValue(const std::string& value) override { text = value; note("setStringValue " + value); }
    void setFont(const platform::ui::Font& value) override { font = value; note("setFont"); }
    void setTextColor(platform::ui::Color value) override { color = value; note("setTextColor"); }
    void setAlignment(platform::ui::TextAlignment value) override { alignment = value; note("setAlignment"); }
    void setLineBreakMode(platform::ui::LineBreakMode value) override { lineBreakMode = value; note("setLineBreakMode"); }
    void setMaximumNumberOfLines(int value) override { maximumLines = value; note("setMaximumNumberOfLines"); }
};

class ScriptedImageView final : public ScriptedViewKind<platform::ui::ImageView> {
public:
    using ScriptedViewKind::ScriptedViewKind;
    std::shared_ptr<platform::ui::Image> image;
    std::optional<platform::ui::ImageScaling> scaling;

    void setImage(std::shared_ptr<platform::ui::Image> value) override { image = value; note("setImage"); }
    void setImageScaling(platform::ui::ImageScaling value) override { scaling = value; note("setImageScaling"); }
};

class ScriptedProgressIndicator final : public ScriptedViewKind<platform::ui::ProgressIndicator> {
public:
    using ScriptedViewKind::ScriptedViewKind;
    std::optional<platform::ui::ProgressIndicatorStyle> style;
    bool indeterminate = false;
    bool animating = false;

    void setStyle(platform::ui::ProgressIndicatorStyle value) override { style = value; note("setStyle"); }
    void setIndeterminate(bool value) override { indeterminate = value; note("setIndeterminate"); }
    void startAnimation() override { animating = true; note("startAnimation"); }
    void stopAnimation() override { animating = false; note("stopAnimation"); }
};

class ScriptedWindow final : public platform::ui::Window {
public:
    explicit ScriptedWindow(EventLog& log) : log_(log) {}
    std::string title;
    std::optional<bool> releasedWhenClosed;
    std::shared_ptr<platform::ui::View> contentView;

    void setTitle(const std::string& value) override { title = value; log_.add("window.setTitle " + value); }
    void setReleasedWhenClosed(bool value) override { releasedWhenClosed = value; log_.add("window.setReleasedWhenClosed"); }
    void center() override { log_.add("window.center"); }
    void setContentView(std::shared_ptr<platform::ui::View> view) override {
        contentView = view;
        log_.add("window.setContentView " + dynamic_cast<ScriptedView&>(*view).name());
    }
    void makeKeyAndOrderFront() override { log_.add("window.makeKeyAndOrderFront"); }

private:
    EventLog& log_;
};

class ScriptedAlert final : public platform::ui::Alert {
public:
    explicit ScriptedAlert(EventLog& log) : log_(log) {}
    std::string messageText;
    std::string informativeText;
    std::optional<platform::ui::AlertStyle> style;
    std::vector<std::string> buttons;

    void setMessageText(const std::string& text) override { messageText = text; }
    void setInformativeText(const std::string& text) override { informativeText = text; }
    void setAlertStyle(platform::ui::AlertStyle value) override { style = value; }
    void addButtonWithTitle(const std::string& title) override { buttons.push_back(title); }
    platform::ui::ModalResponse runModal() override {
        log_.add("alert.runModal");
        return platform::ui::kAlertFirstButtonReturn;
    }

private:
    EventLog& log_;
};

class ScriptedApplication final : public platform::ui::Application {
public:
    explicit ScriptedApplication(EventLog& log) : log_(log) {}
    std::shared_ptr<platform::ui::Image> icon = std::make_shared<platform::ui::Image>();
    platform::ui::ApplicationDelegate* delegate = nullptr;
    bool terminated = false;

    void setActivationPolicy(platform::ui::ActivationPolicy) override { log_.add("app.setActivationPolicy"); }
    void setDelegate(platform::ui::ApplicationDelegate* value) override { delegate = value; }
    void run() override { log_.add("app.run"); }
    // Asks the delegate, as the real application does, and ends when it agrees.
    void terminate() override {
        auto reply = delegate ? delegate->applicationShouldTerminate(*this)
                              : platform::ui::TerminateReply::TerminateNow;
        log_.add(joined("app.terminate reply=", static_cast<int>(reply)));
        if (reply == platform::ui::TerminateReply::TerminateNow) terminated = true;
    }
    void replyToApplicationShouldTerminate(bool value) override {
        log_.add(joined("app.replyToApplicationShouldTerminate ", value));
        if (value) terminated = true;
    }
    void activateIgnoringOtherApps(bool value) override {
        log_.add(joined("app.activateIgnoringOtherApps ", value));
    }
    std::shared_ptr<platform::ui::Image> applicationIconImage() override { return icon; }

private:
    EventLog& log_;
};

class ScriptedToolkit final : public platform::ui::Toolkit {
public:
    explicit ScriptedToolkit(EventLog& log) : application(log), log_(log) {}

    ScriptedApplication application;
    std::shared_ptr<ScriptedWindow> window;
    std::unique_ptr<platform::ui::Rect> windowContentRect;
    unsigned windowStyleMask = 0;
    std::vector<std::shared_ptr<ScriptedLabel>> labels;
    std::vector<std::shared_ptr<ScriptedImageView>> imageViews;
    std::vector<std::shared_ptr<ScriptedProgressIndicator>> progressIndicators;
    std::vector<std::shared_ptr<ScriptedView>> views;
    std::vector<std::shared_ptr<ScriptedAlert>> alerts;

    platform::ui::Application& sharedApplication() override { return application; }
    std::shared_ptr<platform::ui::Window> makeWindow(const platform::ui::Rect& rect, unsigned mask,
                                                     platform::ui::BackingStoreType backing,
                                                     bool defer) override {
        log_.add(joined("makeWindow ", describe(rect), " style=", mask, " backing=",
                           static_cast<int>(backing), " defer=", defer));
        windowContentRect = std::make_unique<platform::ui::Rect>(rect);
        windowStyleMask = mask;
        return window = std::make_shared<ScriptedWindow>(log_);
    }
    std::shared_ptr<platform::ui::View> makeView(const platform::ui::Rect& frame) override {
        return made(views, "view", frame);
    }
    std::shared_ptr<platform::ui::ImageView> makeImageView(const platform::ui::Rect& frame) override {
        return made(imageViews, "imageView", frame);
    }
    std::shared_ptr<platform::ui::Label> labelWithString(const std::string& text) override {
        auto label = made(labels, "label", platform::ui::Rect{});
        label->text = text;
        log_.add("labelWithString " + text);
        return label;
    }
    std::shared_ptr<platform::ui::ProgressIndicator> makeProgressIndicator() override {
        return made(progressIndicators, "progress", platform::ui::Rect{});
    }
    std::shared_ptr<platform::ui::Alert> makeAlert() override {
        alerts.push_back(std::make_shared<ScriptedAlert>(log_));
        return alerts.back();
    }

private:
    template <class Kind>
    std::shared_ptr<Kind> made(std::vector<std::shared_ptr<Kind>>& list, const std::string& kind,
                               const platform::ui::Rect& frame) {
        std::string name = kind + " " + std::to_string(list.size() + 1);
        log_.add("make " + name);
        list.push_back(std::make_shared<Kind>(log_, name));
        list.back()->setFrame(frame);
        return list.back();
    }

    EventLog& log_;
};

}  // namespace testing_support
