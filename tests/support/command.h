// Running a shell command from a test and collecting its output.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>

namespace testing_support {

struct CommandResult {
    int exitStatus = -1;  // -1 when it did not exit normally
    std::string output;   // standard output
};

// Runs `command` with /bin/sh -c and waits for it.
CommandResult runCommand(const std::string& command);

// `text` in single quotes for /bin/sh.
std::string shellWord(const std::string& text);

// Starts `program` with `arguments` (shell words) in the background and waits up to two seconds
// until it runs the program; its process id.
pid_t startInBackground(const std::string& program, const std::string& arguments = "");

// Waits up to two seconds for `ready`.
void waitUntil(const std::function<bool()>& ready);

// The folder of the built programs (the test program's own folder's build tree): set by CMake.
std::string buildFolder();

}  // namespace testing_support
