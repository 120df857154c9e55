// Breaking a label's text into the lines it shows, since QLabel has no limit on its lines.
#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

namespace platform::linux_backend {

// `text` wrapped at word boundaries (and at its line feeds) into lines no wider than `width`
// pixels in `font`. With `maximumLines` > 0 and more lines needed, the last line shown holds the
// rest of the text cut to fit with "…" at its end. A word wider than `width` is broken inside.
QStringList wrappedLines(const QString& text, const QFont& font, int width, int maximumLines);

// `text` on one line: its line feeds become blanks.
QString singleLine(const QString& text);

}  // namespace platform::linux_backend
