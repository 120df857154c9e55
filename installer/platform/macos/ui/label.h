// Labels on AppKit: NSTextField's label text field. Every label ends the last line it has room for
// with "…" when text is left over (its cell truncates the last visible line).
#pragma once

#include <memory>
#include <string>

#include "platform/ui/label.h"

namespace platform::macos {

// A label showing `text` on one line in the system font of the default size.
std::shared_ptr<ui::Label> makeLabel(const std::string& text);

}  // namespace platform::macos
