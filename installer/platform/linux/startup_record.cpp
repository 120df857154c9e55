#include "platform/linux/startup_record.h"

#include <sys/auxv.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>

namespace platform::linux_backend {
namespace {

struct StartupRecord {
    std::vector<std::string> arguments;
    std::string executedPath;   // as given to execve, possibly relative
    std::string workingFolder;  // empty when it could not be read
};

// Filled once, by recordStartup, before main() and before any other thread exists.
StartupRecord& record() {
    static StartupRecord startup;
    return startup;
}

void recordStartup(int argc, char** argv, char**) {
    StartupRecord& startup = record();
    if (argv != nullptr) startup.arguments.assign(argv, argv + argc);
    if (auto executed = reinterpret_cast<const char*>(getauxval(AT_EXECFN))) startup.executedPath = executed;
    char folder[PATH_MAX];
    if (getcwd(folder, sizeof folder) != nullptr) startup.workingFolder = folder;
}

[[gnu::used, gnu::section(".init_array")]] void (*const kRecordStartup)(int, char**, char**) = recordStartup;

}  // namespace

const std::vector<std::string>& startupArguments() { return record().arguments; }

std::string startupExecutablePath() {
    const StartupRecord& startup = record();
    std::string path = startup.executedPath;
    if (path.empty()) return {};
    if (path.front() != '/') {
        if (startup.workingFolder.empty()) return {};
        path = startup.workingFolder + "/" + path;
    }
    char resolved[PATH_MAX];
    return realpath(path.c_str(), resolved) != nullptr ? resolved : path;
}

}  // namespace platform::linux_backend
