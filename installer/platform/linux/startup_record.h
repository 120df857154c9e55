// What the process was started with, recorded before main() runs: for when /proc cannot tell (a
// chroot or a bare container without it). glibc hands each function of the executable's
// .init_array the process's argc, argv and envp; the record is taken there, before any toolkit
// edits argv and before anything can change the working folder.
#pragma once

#include <string>
#include <vector>

namespace platform::linux_backend {

// The argument list as the process was started, element 0 included; empty when the C library did
// not pass it.
const std::vector<std::string>& startupArguments();

// The path of the running executable as /proc/self/exe gives it, worked out without /proc: the
// path the program was started by (AT_EXECFN), taken against the working folder at start-up, with
// its links resolved. Empty when it cannot be told.
std::string startupExecutablePath();

}  // namespace platform::linux_backend
