// The installer application as shipped (entry, delegate, window, Qt toolkit, Qt dispatch) with the
// engine's two operations played by this program, so tests can drive every ending on a real
// display without copying anything:
//   installer_window_probe [--install-seconds S] [--install-fails] [--launch-fails] [installer options]
// It prints "install-returned" when the install's work is over and "exit" when the event loop has
// ended, each with the milliseconds since it started.
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <thread>

#include "installer_app_delegate.h"
#include "platform/services.h"

namespace {

const auto kStart = std::chrono::steady_clock::now();

void report(const char* event) {
    auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - kStart);
    std::printf("%s %lld\n", event, static_cast<long long>(elapsed.count()));
    std::fflush(stdout);
}

struct Script {
    double installSeconds = 0;
    bool installFails = false;
    bool launchFails = false;
};

Script readScript(int argc, char** argv) {
    Script script;
    for (int index = 1; index < argc; ++index) {
        if (!std::strcmp(argv[index], "--install-seconds") && index + 1 < argc) script.installSeconds = std::stod(argv[++index]);
        if (!std::strcmp(argv[index], "--install-fails")) script.installFails = true;
        if (!std::strcmp(argv[index], "--launch-fails")) script.launchFails = true;
    }
    return script;
}

installer_app::EngineOperations scriptedEngine(Script script) {
    return {
        .install = [script](const engine::Installer&) -> platform::Expected<void, engine::InstallError> {
            std::this_thread::sleep_for(std::chrono::duration<double>(script.installSeconds));
            report("install-returned");
            if (script.installFails) {
                return platform::Expected<void, engine::InstallError>::failure(
                    engine::InstallError::copyFailed("The disk is full."));
            }
            return {};
        },
        .launchInstalledApp = [script](const engine::Installer&, engine::Installer::LaunchCompletion done) {
            std::optional<platform::Error> error;
            if (script.launchFails) error = platform::Error("The application could not be found.");
            platform::dispatch().mainAsync([done, error] { done(error); });
        },
    };
}

std::shared_ptr<installer_app::InstallerAppDelegate> delegate;

}  // namespace

int main(int argc, char** argv) {
    Script script = readScript(argc, argv);
    platform::ui::Application& app = platform::ui::toolkit().sharedApplication();
    app.setActivationPolicy(platform::ui::ActivationPolicy::Regular);
    delegate = std::make_shared<installer_app::InstallerAppDelegate>(scriptedEngine(script));
    app.setDelegate(delegate.get());
    app.run();
    report("exit");
    return 0;
}
