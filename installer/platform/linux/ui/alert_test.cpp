// The Linux toolkit's alert: application-modal, its first button the default.
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QTimer>

#include "platform/linux/ui/qt_test_display.h"

namespace {

using namespace platform::ui;
using AlertOnADisplay = testing_support::OnADisplay;

TEST_F(AlertOnADisplay, TheAlertIsApplicationModalAndReturnPressesItsFirstButton) {
    auto alert = toolkit().makeAlert();
    alert->addButtonWithTitle("Quit");
    alert->addButtonWithTitle("Other");
    Qt::WindowModality modality = Qt::NonModal;
    QObject scope;
    QTimer::singleShot(300, &scope, [&] {
        QWidget* shown = QApplication::activeModalWidget();
        modality = shown->windowModality();
        QApplication::postEvent(shown, new QKeyEvent(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier));
    });
    EXPECT_EQ(alert->runModal(), kAlertFirstButtonReturn);
    EXPECT_EQ(modality, Qt::ApplicationModal);
}

}  // namespace
