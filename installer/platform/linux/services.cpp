// The Linux backend's services, made once and never destroyed (see platform/no_destructor.h).
#include "platform/services.h"

#include "platform/linux/apple_script.h"
#include "platform/linux/dispatch.h"
#include "platform/linux/file_manager.h"
#include "platform/linux/main_bundle.h"
#include "platform/linux/process_info.h"
#include "platform/linux/workspace.h"
#include "platform/no_destructor.h"
#include "platform/linux/child_processes.h"
#include "platform/posix/process_signals.h"
#include "platform/linux/clock.h"

namespace platform {

ServiceTable makeBackendServices() {
    static NoDestructor<linux_backend::LinuxProcessInfo> processInfo;
    static NoDestructor<linux_backend::LinuxMainBundle> mainBundle;
    static NoDestructor<linux_backend::LinuxFileManager> fileManager;
    static NoDestructor<linux_backend::LinuxWorkspace> workspace;
    static NoDestructor<linux_backend::LinuxChildProcesses> childProcesses;
    static NoDestructor<posix::PosixProcessSignals> processSignals;
    static NoDestructor<linux_backend::LinuxClock> clock;
    static NoDestructor<linux_backend::LinuxAppleScriptRunner> appleScript;
    static NoDestructor<linux_backend::LinuxDispatch> dispatch;
    ServiceTable table;
    table.processInfo = processInfo.get();
    table.mainBundle = mainBundle.get();
    table.fileManager = fileManager.get();
    table.workspace = workspace.get();
    table.childProcesses = childProcesses.get();
    table.processSignals = processSignals.get();
    table.clock = clock.get();
    table.appleScript = appleScript.get();
    table.dispatch = dispatch.get();
    return table;
}

}  // namespace platform
