#include "platform/linux/ui/label/label_lines.h"

#include <QFontMetrics>
#include <QTextLayout>
#include <QTextOption>

namespace platform::linux_backend {
namespace {

// QTextLayout breaks lines at the Unicode line separator, not at a line feed.
QString withLineSeparators(QString text) { return text.replace(QChar('\n'), QChar::LineSeparator); }

QString withoutLineEnd(QString line) {
    while (!line.isEmpty() && (line.back() == QChar::LineSeparator || line.back().isSpace())) {
        line.chop(1);
    }
    return line;
}

}  // namespace

QStringList wrappedLines(const QString& text, const QFont& font, int width, int maximumLines) {
    QString laidOut = withLineSeparators(text);
    QTextLayout layout(laidOut, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);

    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        bool lastAllowed = maximumLines > 0 && lines.size() == maximumLines - 1;
        if (lastAllowed && line.textStart() + line.textLength() < laidOut.size()) {
            QString rest = laidOut.mid(line.textStart()).replace(QChar::LineSeparator, QChar(' '));
            lines << QFontMetrics(font).elidedText(singleLine(withoutLineEnd(rest)), Qt::ElideRight, width);
            break;
        }
        lines << withoutLineEnd(laidOut.mid(line.textStart(), line.textLength()));
    }
    layout.endLayout();
    return lines;
}

QString singleLine(const QString& text) { return QString(text).replace(QChar('\n'), QChar(' ')); }

}  // namespace platform::linux_backend
