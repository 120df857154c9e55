#include "platform/linux/ui/alert.h"

#include <QPushButton>

namespace platform::linux_backend {
namespace {

QMessageBox::Icon qtIcon(ui::AlertStyle style) {
    switch (style) {
        case ui::AlertStyle::Warning: return QMessageBox::Warning;
    }
    return QMessageBox::Warning;
}

}  // namespace

QtAlert::QtAlert() : box_(new QMessageBox) {
    box_->setWindowModality(Qt::ApplicationModal);
    box_->setIcon(qtIcon(ui::AlertStyle::Warning));
}

QtAlert::~QtAlert() { delete box_.data(); }

void QtAlert::setMessageText(const std::string& text) {
    box_->setText(QString::fromStdString(text));
    box_->setWindowTitle(QString::fromStdString(text));
}

void QtAlert::setInformativeText(const std::string& text) {
    box_->setInformativeText(QString::fromStdString(text));
}

void QtAlert::setAlertStyle(ui::AlertStyle style) { box_->setIcon(qtIcon(style)); }

void QtAlert::addButtonWithTitle(const std::string& title) {
    QPushButton* button = box_->addButton(QString::fromStdString(title), QMessageBox::AcceptRole);
    if (buttons_.empty()) box_->setDefaultButton(button);
    buttons_.push_back(button);
}

ui::ModalResponse QtAlert::runModal() {
    box_->exec();
    for (std::size_t index = 0; index < buttons_.size(); ++index) {
        if (box_->clickedButton() == buttons_[index]) {
            return ui::kAlertFirstButtonReturn + static_cast<ui::ModalResponse>(index);
        }
    }
    return ui::kAlertFirstButtonReturn;
}

}  // namespace platform::linux_backend
