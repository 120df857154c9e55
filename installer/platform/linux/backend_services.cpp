// The Linux backend's services, made once and kept for the life of the process.
#include "platform/services.h"

#include "platform/linux/apple_script.h"
#include "platform/linux/child_processes.h"
#include "platform/linux/dispatch.h"
#include "platform/linux/file_manager.h"
#include "platform/linux/main_bundle.h"
#include "platform/linux/process_info.h"
#include "platform/linux/process_signals.h"
#include "platform/linux/system_clock.h"
#include "platform/linux/workspace.h"

namespace platform {

ServiceTable makeBackendServices() {
    static linux_backend::LinuxProcessInfo processInfo;
    static linux_backend::LinuxMainBundle mainBundle;
    static linux_backend::LinuxFileManager fileManager;
    static linux_backend::LinuxWorkspace workspace;
    static linux_backend::LinuxChildProcesses childProcesses;
    static linux_backend::LinuxProcessSignals processSignals;
    static linux_backend::SystemClock clock;
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
