#include "platform/ui/toolkit.h"

namespace platform::ui {
namespace {

// The replacement in force; none means the backend's toolkit.
Toolkit*& replacement() {
    static Toolkit* current = nullptr;
    return current;
}

}  // namespace

Toolkit& toolkit() { return replacement() != nullptr ? *replacement() : backendToolkit(); }

ScopedToolkit::ScopedToolkit(Toolkit& toolkit) : previous_(replacement()) { replacement() = &toolkit; }

ScopedToolkit::~ScopedToolkit() { replacement() = previous_; }

}  // namespace platform::ui
