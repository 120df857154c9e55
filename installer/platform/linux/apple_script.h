// The AppleScript runner on Linux: runs `do shell script` sources (see apple_script/script_source.h)
// with /bin/sh.
//
// The command runs as `/bin/sh -c COMMAND` as a child process (see child_processes.h); its
// standard output is not used (nobody uses a script's result). "with administrator privileges" runs it as root:
// directly when the installer already is root, otherwise through `pkexec /bin/sh -c COMMAND`,
// which asks for the administrator password. Without that clause it runs as this user.
//
// A script fails
// - when its source is malformed: number -2740 and a sentence saying why;
// - when it needs administrator rights that nobody can give (this user is not root and pkexec is
//   not installed): number -2700 and no message, so that the person reads the caller's own reason
//   for wanting them;
// - when the person asked for the password dismissed the request: -128, "user canceled";
// - when the command cannot be started, or exits with a non-zero status: the message is then its
//   standard error without the one final line break, and the number its exit status. pkexec's own
//   failures (not authorized, no authentication agent) read the same way: 127 and pkexec's words.
// Execution blocks the calling thread.
#pragma once

#include "platform/apple_script.h"

namespace platform::linux_backend {

class LinuxAppleScriptRunner final : public AppleScriptRunner {
public:
    // Fails only when `source` is not valid UTF-8; a malformed script is reported by `execute`.
    Expected<std::unique_ptr<AppleScript>, Error> scriptWithSource(const std::string& source) override;
};

}  // namespace platform::linux_backend
