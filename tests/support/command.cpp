#include "support/command.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

namespace testing_support {

CommandResult runCommand(const std::string& command) {
    CommandResult result;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return result;
    char buffer[4096];
    std::size_t count;
    while ((count = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) result.output.append(buffer, count);
    int status = pclose(pipe);
    if (status != -1 && WIFEXITED(status)) result.exitStatus = WEXITSTATUS(status);
    return result;
}

std::string shellWord(const std::string& text) {
    std::string out = "'";
    for (char c : text) out += (c == '\'') ? std::string("'\\''") : std::string(1, c);
    return out + "'";
}

pid_t startInBackground(const std::string& program, const std::string& arguments) {
    pid_t pid = std::stoi(runCommand(shellWord(program) + " " + arguments + " >/dev/null 2>&1 & echo $!").output);
    std::error_code notYet;
    waitUntil([&] { return std::filesystem::equivalent("/proc/" + std::to_string(pid) + "/exe", program, notYet); });
    return pid;
}

void waitUntil(const std::function<bool()>& ready) {
    for (int tries = 0; tries < 1000 && !ready(); ++tries) usleep(2000);
}

std::string buildFolder() { return KELVO_BUILD_FOLDER; }

}  // namespace testing_support
