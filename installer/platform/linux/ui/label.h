// Labels on Qt: a QLabel that shows its text already broken into the lines it has room for.
#pragma once

#include <QLabel>

#include <optional>

#include "platform/linux/ui/view.h"
#include "platform/ui/label.h"

namespace platform::linux_backend {

// The QLabel behind a ui::Label. It keeps the whole text and shows the lines that fit its width,
// at most the maximum number, the last cut with "…" when text is left over; it redoes this
// whenever the text, font, mode or width changes.
class LineLimitedLabel final : public QLabel {
public:
    LineLimitedLabel();

    const QString& fullText() const { return fullText_; }
    void setFullText(const QString& text);
    void setLineBreakMode(ui::LineBreakMode mode);
    void setMaximumNumberOfLines(int lines);
    void setLabelFont(const QFont& font);

    // Fits the text to the label's current width; a hidden label gets no resize events.
    void showFittedText();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QString fullText_;
    std::optional<ui::LineBreakMode> mode_;  // none: one line, cut at the edge
    int maximumLines_ = 1;
};

class QtLabel final : public QtViewOf<ui::Label> {
public:
    explicit QtLabel(const std::string& text);

    void setFrame(const ui::Rect& frame) override;

    std::string stringValue() const override;
    void setStringValue(const std::string& text) override;
    void setFont(const ui::Font& font) override;
    void setTextColor(ui::Color color) override;
    void setAlignment(ui::TextAlignment alignment) override;
    void setLineBreakMode(ui::LineBreakMode mode) override;
    void setMaximumNumberOfLines(int lines) override;

private:
    LineLimitedLabel* label() const;
};

// The system font of `font`'s size (in pixels: a point of the window is a pixel) and weight.
QFont systemFont(const ui::Font& font);

}  // namespace platform::linux_backend
