// The status line the Linux toolkit shows: at most three lines, the last cut with an ellipsis.
#include <gtest/gtest.h>

#include <QLabel>

#include "platform/linux/ui/qt_test_display.h"

namespace {

using namespace platform::ui;
using LabelOnADisplay = testing_support::OnADisplay;

TEST_F(LabelOnADisplay, TheStatusLineShowsAtMostThreeLinesTheLastCutWithAnEllipsis) {
    const std::string sentence = "Kelvo could not be copied to the Applications folder because the disk is full. ";
    for (const std::string& text : {std::string("Kelvo was installed, but could not be launched.\nOpen Kelvo."),
                                     sentence + sentence + sentence + sentence}) {
        auto label = toolkit().labelWithString(text);
        label->setFont({12, FontWeight::Regular});
        label->setLineBreakMode(LineBreakMode::ByWordWrapping);
        label->setMaximumNumberOfLines(3);
        label->setFrame(Rect{24, 44, 412, 44});
        QString shown = static_cast<QLabel*>(widgetOf(*label))->text();
        bool cut = text.starts_with(sentence);
        EXPECT_TRUE(cut ? shown.count('\n') == 2 && shown.endsWith(QChar(0x2026)) : shown.toStdString() == text)
            << shown.toStdString();
        EXPECT_EQ(label->stringValue(), text) << "the whole text is kept";
    }
}

}  // namespace
