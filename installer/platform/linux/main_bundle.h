// The main bundle, found from the path of the running executable: /proc/self/exe, or without /proc
// the path the program was started by, resolved as the kernel would have.
#pragma once

#include "platform/main_bundle.h"

namespace platform::linux_backend {

class LinuxMainBundle final : public MainBundle {
public:
    std::string bundlePath() override;
    std::optional<FileURL> resourceURL() override;
};

}  // namespace platform::linux_backend
