// The macOS backend's services, made once and kept for the life of the process. Signals are the
// plain POSIX ones the Linux backend uses too.
#include "platform/services.h"

#include "platform/macos/apple_script.h"
#include "platform/macos/child_processes.h"
#include "platform/macos/clock.h"
#include "platform/macos/dispatch.h"
#include "platform/macos/file_manager.h"
#include "platform/macos/main_bundle.h"
#include "platform/macos/process_info.h"
#include "platform/macos/workspace.h"
#include "platform/posix/process_signals.h"

namespace platform {

ServiceTable makeBackendServices() {
    static macos::MacProcessInfo processInfo;
    static macos::MacMainBundle mainBundle;
    static macos::MacFileManager fileManager;
    static macos::MacWorkspace workspace;
    static macos::MacChildProcesses childProcesses;
    static posix::PosixProcessSignals processSignals;
    static macos::MacClock clock;
    static macos::MacAppleScriptRunner appleScript;
    static macos::MacDispatch dispatch;
    ServiceTable table;
    table.processInfo = &processInfo;
    table.mainBundle = &mainBundle;
    table.fileManager = &fileManager;
    table.workspace = &workspace;
    table.childProcesses = &childProcesses;
    table.processSignals = &processSignals;
    table.clock = &clock;
    table.appleScript = &appleScript;
    table.dispatch = &dispatch;
    return table;
}

}  // namespace platform
