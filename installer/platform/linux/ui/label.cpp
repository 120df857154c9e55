#include "platform/linux/ui/label.h"

#include <QApplication>
#include <QPalette>

#include "platform/linux/ui/label/label_lines.h"

namespace platform::linux_backend {
namespace {

QFont::Weight qtWeight(ui::FontWeight weight) {
    switch (weight) {
        case ui::FontWeight::Regular: return QFont::Normal;
        case ui::FontWeight::Semibold: return QFont::DemiBold;
    }
    return QFont::Normal;
}

Qt::Alignment qtHorizontalAlignment(ui::TextAlignment alignment) {
    switch (alignment) {
        case ui::TextAlignment::Center: return Qt::AlignHCenter;
    }
    return Qt::AlignLeft;
}

}  // namespace

QFont systemFont(const ui::Font& font) {
    QFont qtFont = QApplication::font();
    qtFont.setPixelSize(static_cast<int>(font.size));
    qtFont.setWeight(qtWeight(font.weight));
    return qtFont;
}

LineLimitedLabel::LineLimitedLabel() {
    setTextFormat(Qt::PlainText);
    setWordWrap(false);
    setMargin(0);
    setIndent(0);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

void LineLimitedLabel::setFullText(const QString& text) {
    fullText_ = text;
    showFittedText();
}

void LineLimitedLabel::setLineBreakMode(ui::LineBreakMode mode) {
    mode_ = mode;
    showFittedText();
}

void LineLimitedLabel::setMaximumNumberOfLines(int lines) {
    maximumLines_ = lines;
    showFittedText();
}

void LineLimitedLabel::setLabelFont(const QFont& font) {
    setFont(font);
    showFittedText();
}

void LineLimitedLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    showFittedText();
}

void LineLimitedLabel::showFittedText() {
    int width = contentsRect().width();
    if (mode_ == ui::LineBreakMode::ByWordWrapping) {
        setText(wrappedLines(fullText_, font(), width, maximumLines_).join(QChar('\n')));
    } else {
        setText(singleLine(fullText_));
    }
}

QtLabel::QtLabel(const std::string& text) : QtViewOf<ui::Label>(new LineLimitedLabel) {
    setStringValue(text);
}

void QtLabel::setFrame(const ui::Rect& frame) {
    WidgetView::setFrame(frame);
    label()->showFittedText();
}

LineLimitedLabel* QtLabel::label() const { return static_cast<LineLimitedLabel*>(widget()); }

std::string QtLabel::stringValue() const { return label()->fullText().toStdString(); }

void QtLabel::setStringValue(const std::string& text) {
    label()->setFullText(QString::fromStdString(text));
}

void QtLabel::setFont(const ui::Font& font) { label()->setLabelFont(systemFont(font)); }

void QtLabel::setTextColor(ui::Color color) {
    QPalette palette = label()->palette();
    QColor text;
    switch (color) {
        case ui::Color::secondaryLabelColor: text = QApplication::palette().color(QPalette::PlaceholderText); break;
    }
    palette.setColor(QPalette::WindowText, text);
    label()->setPalette(palette);
}

void QtLabel::setAlignment(ui::TextAlignment alignment) {
    label()->setAlignment(qtHorizontalAlignment(alignment) | Qt::AlignTop);
}

void QtLabel::setLineBreakMode(ui::LineBreakMode mode) { label()->setLineBreakMode(mode); }

void QtLabel::setMaximumNumberOfLines(int lines) { label()->setMaximumNumberOfLines(lines); }

}  // namespace platform::linux_backend
