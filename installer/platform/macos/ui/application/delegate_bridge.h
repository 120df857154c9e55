// How AppKit's application-delegate callbacks reach a ui::ApplicationDelegate.
//
// The bridge makes an Objective-C object in the NSApplicationDelegate role the shared
// NSApplication's delegate. It forwards applicationDidFinishLaunching: and
// applicationShouldTerminateAfterLastWindowClosed: to the C++ delegate, with `application` as the
// ui application they are about, and implements nothing else: in particular it answers no
// termination request, so AppKit never delays or refuses a termination on the delegate's behalf. NSApplication keeps its
// delegate weakly: the bridge owns that object, and stops being the delegate when destroyed.
//
// A C++ exception must not unwind through AppKit's frames: one thrown by the delegate ends the
// process (std::terminate) where it leaves the delegate. Main thread only.
#pragma once

#include <memory>

#include "platform/ui/application.h"

namespace platform::macos {

class ApplicationDelegateBridge {
public:
    // Neither `application` nor `delegate` is owned: both must outlive the bridge.
    ApplicationDelegateBridge(ui::Application& application, ui::ApplicationDelegate& delegate);
    ~ApplicationDelegateBridge();

    ApplicationDelegateBridge(const ApplicationDelegateBridge&) = delete;
    ApplicationDelegateBridge& operator=(const ApplicationDelegateBridge&) = delete;

private:
    struct Forwarder;
    std::unique_ptr<Forwarder> forwarder_;
};

}  // namespace platform::macos
