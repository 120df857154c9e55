// The main bundle as Foundation finds it: the bundle that holds the running executable, or, for a
// bare executable, the folder it lies in.
#pragma once

#include "platform/main_bundle.h"

namespace platform::macos {

class MacMainBundle final : public MainBundle {
public:
    // Where the user opened the bundle, also when Gatekeeper runs it translocated (see
    // main_bundle/translocation.h), so that the installer still finds the volume it came from.
    std::string bundlePath() override;
    // NSBundle names a resources folder even when the bundle has none: it counts only when a
    // folder is really there. Translocated or not, the resources are read where the bundle runs.
    std::optional<FileURL> resourceURL() override;
};

}  // namespace platform::macos
