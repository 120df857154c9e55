#include "platform/linux/process_info.h"

#include <unistd.h>

#include <fstream>
#include <iterator>

#include "platform/linux/startup_record.h"

namespace platform::linux_backend {
namespace {

// The NUL-terminated elements of a /proc/<pid>/cmdline file.
std::vector<std::string> splitCommandLine(const std::string& contents) {
    std::vector<std::string> elements;
    std::size_t start = 0;
    while (start < contents.size()) {
        std::size_t end = contents.find('\0', start);
        if (end == std::string::npos) end = contents.size();
        elements.push_back(contents.substr(start, end - start));
        start = end + 1;
    }
    return elements;
}

}  // namespace

std::vector<std::string> LinuxProcessInfo::arguments() {
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    if (!file) return startupArguments();
    std::string contents((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    return splitCommandLine(contents);
}

std::int32_t LinuxProcessInfo::processIdentifier() { return static_cast<std::int32_t>(getpid()); }

std::uint32_t LinuxProcessInfo::effectiveUserId() { return static_cast<std::uint32_t>(geteuid()); }

}  // namespace platform::linux_backend
