// The macOS backend's services, made once and never destroyed (see platform/no_destructor.h). Signals are the
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
#include "platform/no_destructor.h"
#include "platform/posix/process_signals.h"

namespace platform {

ServiceTable makeBackendServices() {
    static NoDestructor<macos::MacProcessInfo> processInfo;
    static NoDestructor<macos::MacMainBundle> mainBundle;
    static NoDestructor<macos::MacFileManager> fileManager;
    static NoDestructor<macos::MacWorkspace> workspace;
    static NoDestructor<macos::MacChildProcesses> childProcesses;
    static NoDestructor<posix::PosixProcessSignals> processSignals;
    static NoDestructor<macos::MacClock> clock;
    static NoDestructor<macos::MacAppleScriptRunner> appleScript;
    static NoDestructor<macos::MacDispatch> dispatch;
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
