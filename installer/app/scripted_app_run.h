// The installer application run on the scripted machine and toolkit, for its tests. The test plays
// the event loop: it runs the queues' tasks by hand.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "installer_app_delegate.h"
#include "platform/testing/scripted_toolkit.h"

namespace testing_support {

struct AppRun {
    // The platform has finished launching the installer started with `arguments`.
    void start(const std::vector<std::string>& arguments = {}) {
        system.commandLine.insert(system.commandLine.end(), arguments.begin(), arguments.end());
        delegate = std::make_shared<installer_app::InstallerAppDelegate>();
        delegate->applicationDidFinishLaunching();
    }
    // install() runs in the background and hands its outcome to the main queue.
    void install() { system.runBackgroundTasks(); system.runMainTasks(); }
    // What the application did, without the steps of install() itself.
    std::string events() const { return system.events("background: "); }

    ScriptedSystem system;
    ScriptedToolkit toolkit{system};
    platform::ScopedServices services{system.services()};
    platform::ui::ScopedToolkit toolkitScope{toolkit};
    std::shared_ptr<installer_app::InstallerAppDelegate> delegate;
};

}  // namespace testing_support
