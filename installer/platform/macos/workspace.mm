#include "platform/macos/workspace.h"

#import <AppKit/AppKit.h>

#include "platform/macos/ns_error.h"
#include "platform/macos/ns_string.h"
#include "platform/macos/workspace/running_application.h"

namespace platform::macos {
namespace {

using Completion = Workspace::OpenCompletion;

// A C++ exception must not unwind through AppKit's frames: one escaping the completion ends the
// process here instead.
void complete(const Completion& completion, NSError* _Nullable error, const FileURL& url) noexcept {
    if (error == nil) {
        completion({});
        return;
    }
    completion(Expected<void, Error>::failure(
        errorFromNSError(error, "The application " + quoted(url.lastPathComponent()) + " could not be opened.")));
}

NSWorkspaceOpenConfiguration* openConfiguration(const OpenConfiguration& configuration) {
    NSWorkspaceOpenConfiguration* made = [[NSWorkspaceOpenConfiguration alloc] init];
    if (configuration.arguments) made.arguments = toNSStringArray(*configuration.arguments);
    made.activates = configuration.activates;
    return made;
}

}  // namespace

std::vector<std::shared_ptr<RunningApplication>> MacWorkspace::runningApplications() {
    @autoreleasepool {
        std::vector<std::shared_ptr<RunningApplication>> applications;
        for (NSRunningApplication* application in NSWorkspace.sharedWorkspace.runningApplications) {
            applications.push_back(makeRunningApplication(application));
        }
        return applications;
    }
}

std::shared_ptr<RunningApplication> MacWorkspace::runningApplicationWithProcessIdentifier(std::int32_t pid) {
    @autoreleasepool {
        return makeRunningApplication([NSRunningApplication runningApplicationWithProcessIdentifier:pid]);
    }
}

void MacWorkspace::openApplication(const FileURL& url, const OpenConfiguration& configuration,
                                   Completion completion) {
    @autoreleasepool {
        // A block captures a reference by reference: the handler gets a copy of its own.
        FileURL opened = url;
        [NSWorkspace.sharedWorkspace
            openApplicationAtURL:[NSURL fileURLWithPath:toNSString(url.path())]
                   configuration:openConfiguration(configuration)
               completionHandler:^(NSRunningApplication* _Nullable, NSError* _Nullable error) {
                 complete(completion, error, opened);
               }];
    }
}

}  // namespace platform::macos
