#include "platform/linux/ui/qt_application.h"

#include <QApplication>
#include <QIcon>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <string>
#include <vector>

#include "platform/linux/ui/application_icon.h"
#include "platform/linux/ui/qt_image_view.h"
#include "platform/services.h"

namespace platform::linux_backend {
namespace {

// QApplication keeps argc and argv for its whole life and removes its own options from them; the
// installer reads its arguments from the process instead, so it still sees every one.
QApplication& makeQtApplication() {
    static std::vector<std::string> arguments = processInfo().arguments();
    static std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    static int argc = static_cast<int>(arguments.size());
    auto* application = new QApplication(argc, argv.data());
    application->setQuitOnLastWindowClosed(false);
    return *application;
}

// Windows and views go with the application: none outlives the event loop into the process's exit,
// when Qt's own machinery is already being torn down.
void destroyAllWindows() {
    QList<QPointer<QWidget>> windows;
    for (QWidget* widget : QApplication::topLevelWidgets()) windows.append(widget);
    for (const QPointer<QWidget>& window : windows) delete window.data();
}

bool anyWindowVisible() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible()) return true;
    }
    return false;
}

}  // namespace

QtApplication::QtApplication() {
    QApplication& application = makeQtApplication();
    if (std::optional<std::string> path = applicationIconPath()) {
        QPixmap pixmap(QString::fromStdString(*path));
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
    if (terminated_) return;
    QTimer::singleShot(0, [this] {
        if (delegate_ != nullptr) delegate_->applicationDidFinishLaunching();
    });
    QApplication::exec();
    destroyAllWindows();
}

void QtApplication::terminate() {
    if (terminated_ || terminationPending_) return;
    ui::TerminateReply reply = delegate_ != nullptr ? delegate_->applicationShouldTerminate(*this)
                                                    : ui::TerminateReply::TerminateNow;
    switch (reply) {
        case ui::TerminateReply::TerminateNow: finishTermination(); return;
        case ui::TerminateReply::TerminateLater: terminationPending_ = true; return;
        case ui::TerminateReply::TerminateCancel: return;
    }
}

void QtApplication::replyToApplicationShouldTerminate(bool shouldTerminate) {
    if (!terminationPending_) return;
    terminationPending_ = false;
    if (shouldTerminate) finishTermination();
}

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

void QtApplication::finishTermination() {
    terminated_ = true;
    for (QWidget* widget : QApplication::topLevelWidgets()) widget->hide();
    QApplication::exit(0);
}

}  // namespace platform::linux_backend
