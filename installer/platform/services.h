// The process-wide platform services, the way portable code reaches the operating system.
//
// Each accessor returns the service in force: the backend's own, unless a test has put a scripted
// one in its place with `ScopedServices`. The backend's services are made on first use and live
// until the process exits. Replacing services is for tests only, and only while no other thread is
// using them.
#pragma once

#include "platform/apple_script.h"
#include "platform/child_processes.h"
#include "platform/clock.h"
#include "platform/dispatch.h"
#include "platform/file_manager.h"
#include "platform/main_bundle.h"
#include "platform/no_destructor.h"
#include "platform/process_info.h"
#include "platform/process_signals.h"
#include "platform/workspace.h"

namespace platform {

// One pointer per service; a null entry means "not given".
struct ServiceTable {
    ProcessInfo* processInfo = nullptr;
    MainBundle* mainBundle = nullptr;
    FileManager* fileManager = nullptr;
    Workspace* workspace = nullptr;
    ChildProcesses* childProcesses = nullptr;
    ProcessSignals* processSignals = nullptr;
    Clock* clock = nullptr;
    AppleScriptRunner* appleScript = nullptr;
    Dispatch* dispatch = nullptr;
};

// The backend's own services, every entry given. Defined by the backend linked into the program,
// with backendServicesOf.
ServiceTable makeBackendServices();

// The table of one object of each of these classes, made on the first call and never destroyed
// (see platform/no_destructor.h): what makeBackendServices answers.
template <class ProcessInfoKind, class MainBundleKind, class FileManagerKind, class WorkspaceKind,
          class ChildProcessesKind, class ProcessSignalsKind, class ClockKind, class AppleScriptKind,
          class DispatchKind>
ServiceTable backendServicesOf() {
    static NoDestructor<ProcessInfoKind> processInfo;
    static NoDestructor<MainBundleKind> mainBundle;
    static NoDestructor<FileManagerKind> fileManager;
    static NoDestructor<WorkspaceKind> workspace;
    static NoDestructor<ChildProcessesKind> childProcesses;
    static NoDestructor<ProcessSignalsKind> processSignals;
    static NoDestructor<ClockKind> clock;
    static NoDestructor<AppleScriptKind> appleScript;
    static NoDestructor<DispatchKind> dispatch;
    return {processInfo.get(),    mainBundle.get(), fileManager.get(), workspace.get(), childProcesses.get(),
            processSignals.get(), clock.get(),      appleScript.get(), dispatch.get()};
}

ProcessInfo& processInfo();
MainBundle& mainBundle();
FileManager& fileManager();
Workspace& workspace();
ChildProcesses& childProcesses();
ProcessSignals& processSignals();
Clock& clock();
AppleScriptRunner& appleScript();
Dispatch& dispatch();

// Puts the given (non-null) services in force for the life of this object and restores the
// previous ones when it is destroyed. Scopes nest.
class ScopedServices {
public:
    explicit ScopedServices(const ServiceTable& replacements);
    ~ScopedServices();

    ScopedServices(const ScopedServices&) = delete;
    ScopedServices& operator=(const ScopedServices&) = delete;

private:
    ServiceTable previous_;
};

}  // namespace platform
