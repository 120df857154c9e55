// The main bundle as Foundation finds it: the bundle that holds the running executable, or, for a
// bare executable, the folder it lies in.
#pragma once

#include "platform/main_bundle.h"

namespace platform::macos {

class MacMainBundle final : public MainBundle {
public:
    std::string bundlePath() override;
    // NSBundle names a resources folder even when the bundle has none: it counts only when a
    // folder is really there.
    std::optional<FileURL> resourceURL() override;
};

}  // namespace platform::macos
