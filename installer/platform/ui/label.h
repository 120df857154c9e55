// A non-editable text line or block, the toolkit's label text field.
#pragma once

#include <string>

#include "platform/ui/view.h"

namespace platform::ui {

enum class FontWeight { Regular, Semibold };

// The system font at a size in points.
struct Font {
    double size = 13;
    FontWeight weight = FontWeight::Regular;
};

// Named colours that follow the system appearance. A label without one is drawn in the primary text
// colour.
enum class Color {
    secondaryLabelColor,  // text of lesser importance, drawn fainter
};

// A label without one is aligned to its leading edge.
enum class TextAlignment { Center };

// A label without one shows one line, cut at its edge.
enum class LineBreakMode {
    ByWordWrapping,  // wraps at word boundaries
};

class Label : public View {
public:
    // The whole text, also when the label shows only part of it.
    virtual std::string stringValue() const = 0;
    virtual void setStringValue(const std::string& text) = 0;

    virtual void setFont(const Font& font) = 0;
    virtual void setTextColor(Color color) = 0;
    virtual void setAlignment(TextAlignment alignment) = 0;
    virtual void setLineBreakMode(LineBreakMode mode) = 0;

    // At most this many lines are shown; the last one shown ends with "…" when text is left over.
    // 0 means no limit.
    virtual void setMaximumNumberOfLines(int lines) = 0;
};

}  // namespace platform::ui
