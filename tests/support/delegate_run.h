// The installer's delegate with every service scripted, so a test can play the event loop: it
// drains the dispatch queues by hand and answers the engine's calls itself.
#pragma once

#include "installer_app_delegate.h"
#include "platform/services.h"
#include "support/scripted_dispatch.h"
#include "support/scripted_toolkit.h"

namespace testing_support {

class ScriptedProcessInfo final : public platform::ProcessInfo {
public:
    std::vector<std::string> argumentList{"/Volumes/Kelvo/Install Kelvo.app/Contents/MacOS/Install Kelvo"};
    std::vector<std::string> arguments() override { return argumentList; }
    std::int32_t processIdentifier() override { return 4242; }
    std::uint32_t effectiveUserId() override { return 501; }
};

using InstallOutcome = platform::Expected<void, engine::InstallError>;

// The delegate with every service scripted: the test plays the event loop.
class DelegateRun {
public:
    // `arguments` follow the program path; the install returns `outcome`.
    explicit DelegateRun(std::vector<std::string> arguments = {},
                         InstallOutcome outcome = InstallOutcome()) : outcome_(std::move(outcome)) {
        processInfo.argumentList.insert(processInfo.argumentList.end(), arguments.begin(), arguments.end());
        delegate = std::make_shared<installer_app::InstallerAppDelegate>(installer_app::EngineOperations{
            .install = [this](const engine::Installer& installer) {
                log.add("engine.install dest=" + installer.destinationDir());
                return outcome_;
            },
            .launchInstalledApp = [this](const engine::Installer&, engine::Installer::LaunchCompletion done) {
                log.add("engine.launchInstalledApp");
                launchCompletion = std::move(done);
            },
        });
        toolkit.application.setDelegate(delegate.get());
    }

    // The platform has finished launching; the install's work item runs and hands back.
    void launchAndInstall() {
        delegate->applicationDidFinishLaunching();
        dispatch.runBackgroundTasks();
        dispatch.runMainTasks();
    }

    ScriptedLabel& status() { return *toolkit.labels.at(0); }
    ScriptedProgressIndicator& bar() { return *toolkit.progressIndicators.at(0); }

    EventLog log;
    ScriptedToolkit toolkit{log};
    ScriptedDispatch dispatch{log};
    ScriptedProcessInfo processInfo;
    platform::ScopedServices services{{.processInfo = &processInfo, .dispatch = &dispatch}};
    platform::ui::ScopedToolkit toolkitScope{toolkit};
    InstallOutcome outcome_;
    std::shared_ptr<installer_app::InstallerAppDelegate> delegate;
    engine::Installer::LaunchCompletion launchCompletion;
};

}  // namespace testing_support
