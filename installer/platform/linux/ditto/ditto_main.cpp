// ditto [--rsrc] SOURCE DESTINATION
// ditto --version
//
// Copies SOURCE to DESTINATION keeping links, permissions, times, owners (as root) and extended
// attributes. `--rsrc` is accepted for the macOS tool's sake: extended attributes, which hold
// what macOS keeps in resource forks, are always copied. `--` ends the options.
// Exit status: 0 on success, 1 when the copy failed, 64 for a command-line mistake.
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/ditto/ditto_command.h"

namespace {

constexpr int kFailed = 1;
constexpr int kUsageError = 64;
constexpr const char* kUsage = "usage: ditto [--rsrc] SOURCE DESTINATION\n       ditto --version\n";

int usageError(const std::string& problem) {
    std::fprintf(stderr, "ditto: %s\n%s", problem.c_str(), kUsage);
    return kUsageError;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> operands;
    bool optionsEnded = false;
    for (int i = 1; i < argc; ++i) {
        std::string_view argument = argv[i];
        if (optionsEnded || argument.empty() || argument.front() != '-') {
            operands.emplace_back(argument);
        } else if (argument == "--") {
            optionsEnded = true;
        } else if (argument == "--rsrc") {
            continue;  // extended attributes are always copied
        } else if (argument == "--version" && argc == 2) {
            std::printf("%s\n", platform::linux_backend::kDittoVersionLine);
            return 0;
        } else {
            return usageError("unknown option \u201C" + std::string(argument) + "\u201D");
        }
    }
    if (operands.size() != 2) return usageError("expected a source and a destination");
    if (auto copied = platform::linux_backend::dittoCopy(operands[0], operands[1]); !copied) {
        std::fprintf(stderr, "ditto: %s\n", copied.error().localizedDescription().c_str());
        return kFailed;
    }
    return 0;
}
