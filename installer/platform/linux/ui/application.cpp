#include "platform/linux/ui/application.h"

#include <QApplication>
#include <QIcon>
#include <QTimer>
#include <QWidget>

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/linux/ui/image_view.h"
#include "platform/no_destructor.h"

namespace platform::linux_backend {
namespace {

// QApplication keeps argc and argv for its whole life, which outlasts every static destructor, and
// removes its own options from them; the installer reads its arguments from the process instead, so
// it still sees every one.
QApplication& makeQtApplication(std::vector<std::string> processArguments) {
    static NoDestructor<std::vector<std::string>> arguments(std::move(processArguments));
    static NoDestructor<std::vector<char*>> argv;
    for (std::string& argument : *arguments) argv->push_back(argument.data());
    argv->push_back(nullptr);
    static int argc = static_cast<int>(arguments->size());
    auto* application = new QApplication(argc, argv->data());
    application->setQuitOnLastWindowClosed(false);
    return *application;
}

bool anyWindowVisible() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible()) return true;
    }
    return false;
}

}  // namespace

QtApplication::QtApplication(std::vector<std::string> arguments, const std::optional<std::string>& iconPath) {
    QApplication& application = makeQtApplication(std::move(arguments));
    if (iconPath) {
        QPixmap pixmap(QString::fromStdString(*iconPath));
        if (!pixmap.isNull()) {
            application.setWindowIcon(QIcon(pixmap));
            icon_ = std::make_shared<QtImage>(pixmap);
        }
    }
}

// Every Qt application with windows already shows as an ordinary one; without a Dock there is nothing
// else a policy could change.
void QtApplication::setActivationPolicy(ui::ActivationPolicy) {}

void QtApplication::setDelegate(ui::ApplicationDelegate* delegate) { delegate_ = delegate; }

void QtApplication::run() {
    QTimer::singleShot(0, [this] {
        if (delegate_ != nullptr) delegate_->applicationDidFinishLaunching();
    });
    QApplication::exec();
}

// As AppKit does: the process ends from within the event loop, through exit(), with its windows and
// every object still in place, whatever other threads are doing.
void QtApplication::terminate() { std::exit(0); }

void QtApplication::activateIgnoringOtherApps(bool) {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (!widget->isVisible()) continue;
        widget->raise();
        widget->activateWindow();
    }
}

std::shared_ptr<ui::Image> QtApplication::applicationIconImage() { return icon_; }

void QtApplication::windowDidClose() {
    if (anyWindowVisible() || delegate_ == nullptr) return;
    if (delegate_->applicationShouldTerminateAfterLastWindowClosed(*this)) terminate();
}

}  // namespace platform::linux_backend
