// The status line the Linux toolkit shows, its text broken into lines (label/label_lines.h) as wide
// as its frame and as many as it allows.
#include <gtest/gtest.h>

#include <QLabel>

#include "platform/linux/ui/qt_test_display.h"

namespace {

using namespace platform::ui;
using LabelOnADisplay = testing_support::OnADisplay;

TEST_F(LabelOnADisplay, TheStatusLineShowsAtMostThreeLinesTheLastCutWithAnEllipsis) {
    const std::string sentence = "Kelvo could not be copied to the Applications folder because the disk is full. ";
    const std::string text = sentence + sentence + sentence + sentence;
    auto label = toolkit().labelWithString(text);
    label->setFont({12, FontWeight::Regular});
    label->setLineBreakMode(LineBreakMode::ByWordWrapping);
    label->setMaximumNumberOfLines(3);
    label->setFrame(Rect{24, 44, 412, 44});
    QString shown = static_cast<QLabel*>(widgetOf(*label))->text();
    EXPECT_TRUE(shown.count('\n') == 2 && shown.endsWith(QChar(0x2026))) << shown.toStdString();
    EXPECT_EQ(label->stringValue(), text) << "the whole text is kept";
}

}  // namespace
