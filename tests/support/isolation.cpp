#include "support/isolation.h"

#include <filesystem>

#include "support/command.h"

namespace testing_support {

std::optional<std::string> ownProcessNamespaceMissing() {
    // The namespace's first process is the tests' subreaper.
    std::error_code error;
    if (std::filesystem::equivalent("/proc/1/exe", buildFolder() + "/tests/support/subreaper", error)) return std::nullopt;
    return "it needs process and mount namespaces of its own: run it through tools/test.sh as root";
}

}  // namespace testing_support
