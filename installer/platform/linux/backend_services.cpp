// The Linux backend's services, made once and kept for the life of the process.
#include "platform/services.h"

#include "platform/linux/dispatch.h"
#include "platform/linux/file_manager.h"
#include "platform/linux/main_bundle.h"
#include "platform/linux/process_info.h"

namespace platform {

ServiceTable makeBackendServices() {
    static linux_backend::LinuxProcessInfo processInfo;
    static linux_backend::LinuxMainBundle mainBundle;
    static linux_backend::LinuxFileManager fileManager;
    static linux_backend::LinuxDispatch dispatch;
    ServiceTable table;
    table.processInfo = &processInfo;
    table.mainBundle = &mainBundle;
    table.fileManager = &fileManager;
    table.dispatch = &dispatch;
    return table;
}

}  // namespace platform
