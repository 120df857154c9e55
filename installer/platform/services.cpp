#include "platform/services.h"

#include <cstdio>
#include <cstdlib>

namespace platform {
namespace {

// The table in force. Filled from the backend on first use; only ScopedServices changes it later.
ServiceTable& current() {
    static ServiceTable table = makeBackendServices();
    return table;
}

template <class Service>
Service& require(Service* service, const char* name) {
    if (service == nullptr) {
        std::fprintf(stderr, "platform: the backend provides no %s service\n", name);
        std::abort();
    }
    return *service;
}

template <class Service>
void replace(Service*& slot, Service* replacement) {
    if (replacement != nullptr) slot = replacement;
}

}  // namespace

ProcessInfo& processInfo() { return require(current().processInfo, "process info"); }
MainBundle& mainBundle() { return require(current().mainBundle, "main bundle"); }
FileManager& fileManager() { return require(current().fileManager, "file manager"); }
Workspace& workspace() { return require(current().workspace, "workspace"); }
ChildProcesses& childProcesses() { return require(current().childProcesses, "child process"); }
ProcessSignals& processSignals() { return require(current().processSignals, "signal"); }
Clock& clock() { return require(current().clock, "clock"); }
AppleScriptRunner& appleScript() { return require(current().appleScript, "AppleScript"); }
Dispatch& dispatch() { return require(current().dispatch, "dispatch"); }

ScopedServices::ScopedServices(const ServiceTable& replacements) : previous_(current()) {
    ServiceTable& table = current();
    replace(table.processInfo, replacements.processInfo);
    replace(table.mainBundle, replacements.mainBundle);
    replace(table.fileManager, replacements.fileManager);
    replace(table.workspace, replacements.workspace);
    replace(table.childProcesses, replacements.childProcesses);
    replace(table.processSignals, replacements.processSignals);
    replace(table.clock, replacements.clock);
    replace(table.appleScript, replacements.appleScript);
    replace(table.dispatch, replacements.dispatch);
}

ScopedServices::~ScopedServices() { current() = previous_; }

}  // namespace platform
