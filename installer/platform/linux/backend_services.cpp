// The Linux backend's services, made once and kept for the life of the process.
#include "platform/services.h"

#include "platform/linux/apple_script.h"
#include "platform/linux/dispatch.h"
#include "platform/linux/file_manager.h"
#include "platform/linux/main_bundle.h"
#include "platform/linux/process_info.h"
#include "platform/linux/workspace.h"
#include "platform/posix/child_processes.h"
#include "platform/posix/process_signals.h"
#include "platform/posix/system_clock.h"

namespace platform {

ServiceTable makeBackendServices() {
    static linux_backend::LinuxProcessInfo processInfo;
    static linux_backend::LinuxMainBundle mainBundle;
    static linux_backend::LinuxFileManager fileManager;
    static linux_backend::LinuxWorkspace workspace;
    static posix::PosixChildProcesses childProcesses;
    static posix::PosixProcessSignals processSignals;
    static posix::SystemClock clock;
    static linux_backend::LinuxAppleScriptRunner appleScript;
    static linux_backend::LinuxDispatch dispatch;
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
