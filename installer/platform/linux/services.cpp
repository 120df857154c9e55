// The Linux backend's services, made once and never destroyed (see platform/no_destructor.h).
#include "platform/services.h"

#include "platform/linux/apple_script.h"
#include "platform/linux/child_processes.h"
#include "platform/linux/clock.h"
#include "platform/linux/dispatch.h"
#include "platform/linux/file_manager.h"
#include "platform/linux/main_bundle.h"
#include "platform/linux/process_info.h"
#include "platform/linux/workspace.h"
#include "platform/posix/process_signals.h"

namespace platform {

ServiceTable makeBackendServices() {
    using namespace linux_backend;
    return backendServicesOf<LinuxProcessInfo, LinuxMainBundle, LinuxFileManager, LinuxWorkspace, LinuxChildProcesses,
                             posix::PosixProcessSignals, LinuxClock, LinuxAppleScriptRunner, LinuxDispatch>();
}

}  // namespace platform
