// Alerts on Qt: a QMessageBox, application-modal, whose first button is the default one. Window
// managers here give every window a title bar, so the alert's message text is its title as well.
#pragma once

#include <QMessageBox>
#include <QPointer>

#include <memory>

#include "platform/ui/alert.h"

namespace platform::linux_backend {

class QtAlert final : public ui::Alert {
public:
    QtAlert();
    ~QtAlert() override;

    void setMessageText(const std::string& text) override;
    void setInformativeText(const std::string& text) override;
    void setAlertStyle(ui::AlertStyle style) override;
    void addButtonWithTitle(const std::string& title) override;
    ui::ModalResponse runModal() override;

private:
    QPointer<QMessageBox> box_;
    std::vector<QAbstractButton*> buttons_;
};

}  // namespace platform::linux_backend
