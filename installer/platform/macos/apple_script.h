// The AppleScript runner on NSAppleScript, which macOS runs with administrator privileges by
// showing its own password prompt.
//
// NSAppleScript is documented as main-thread only, while the install that runs a script waits on a
// background queue. So every use of the script object (making it, running it, letting it go) is
// done on the main thread: synchronously on the main queue, which the event loop drains, or
// directly when the caller is already on the main thread. The main thread handles no events while
// a script runs, its administrator prompt included. A caller off the main thread needs the main
// thread to be running its event loop, not waiting for that caller: the installer's main thread
// never waits for the install.
#pragma once

#include "platform/apple_script.h"

namespace platform::macos {

class MacAppleScriptRunner final : public AppleScriptRunner {
public:
    // Fails when the source is not UTF-8 or NSAppleScript cannot take it.
    Expected<std::unique_ptr<AppleScript>, Error> scriptWithSource(const std::string& source) override;
};

}  // namespace platform::macos
