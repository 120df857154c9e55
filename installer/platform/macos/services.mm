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
#include "platform/posix/process_signals.h"

namespace platform {

ServiceTable makeBackendServices() {
    using namespace macos;
    return backendServicesOf<MacProcessInfo, MacMainBundle, MacFileManager, MacWorkspace, MacChildProcesses,
                             posix::PosixProcessSignals, MacClock, MacAppleScriptRunner, MacDispatch>();
}

}  // namespace platform
