// A label's text broken into the lines it shows: at word boundaries and line feeds, a word too wide
// broken inside, and the last line allowed cut with "…" when text is left over.
#include "platform/linux/ui/label/label_lines.h"

#include <gtest/gtest.h>

#include <QFontMetrics>

#include "platform/linux/ui/label.h"
#include "platform/linux/ui/qt_test_display.h"

namespace {

using testing_support::OnADisplay;
using LabelLines = OnADisplay;
using platform::linux_backend::wrappedLines;

TEST_F(LabelLines, WrapAtWordsAndLineFeedsAndCutTheLastAllowedLine) {
    const QFont font = platform::linux_backend::systemFont({12, platform::ui::FontWeight::Regular});
    const QFontMetrics metrics(font);
    auto room = [&](const char* text) { return metrics.horizontalAdvance(QString(text)) + 1; };
    const struct {
        QString text;
        int width, maximumLines;
        QStringList lines;
    } rows[] = {
        {"one two three", 1000, 3, {"one two three"}},
        {"one\ntwo", 1000, 3, {"one", "two"}},
        {"word word word", room("word word"), 0, {"word word", "word"}},
        {"word word word word word word", room("word word"), 0, {"word word", "word word", "word word"}},
        {"word word word word word word", room("word word"), 2,
         {"word word", metrics.elidedText("word word word word", Qt::ElideRight, room("word word"))}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(wrappedLines(row.text, font, row.width, row.maximumLines), row.lines) << row.text.toStdString();
    }
    EXPECT_TRUE(rows[4].lines.back().endsWith(QChar(0x2026))) << "the cut line ends with an ellipsis";

    QStringList broken = wrappedLines("Supercalifragilistic", font, room("Super"), 0);
    EXPECT_GT(broken.size(), 1) << "a word wider than the label is broken inside";
    EXPECT_EQ(broken.join(""), "Supercalifragilistic");
}

}  // namespace
