// The installer application as shipped (entry, delegate, window, Qt toolkit, Qt dispatch) with the
// engine's two operations played by this program (an install that succeeds after S seconds), so
// tests can look at the window and close it on a real display without copying anything:
//   installer_window_probe [--install-seconds S] [installer options]
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

double installSeconds(int argc, char** argv) {
    for (int index = 1; index + 1 < argc; ++index) {
        if (!std::strcmp(argv[index], "--install-seconds")) return std::stod(argv[index + 1]);
    }
    return 0;
}

installer_app::EngineOperations scriptedEngine(double seconds) {
    return {
        .install = [seconds](const engine::Installer&) -> platform::Expected<void, engine::InstallError> {
            std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
            report("install-returned");
            return {};
        },
        .launchInstalledApp = [](const engine::Installer&, engine::Installer::LaunchCompletion done) {
            platform::dispatch().mainAsync([done] { done(std::nullopt); });
        },
    };
}

std::shared_ptr<installer_app::InstallerAppDelegate> delegate;

}  // namespace

int main(int argc, char** argv) {
    platform::ui::Application& app = platform::ui::toolkit().sharedApplication();
    app.setActivationPolicy(platform::ui::ActivationPolicy::Regular);
    delegate = std::make_shared<installer_app::InstallerAppDelegate>(scriptedEngine(installSeconds(argc, argv)));
    app.setDelegate(delegate.get());
    app.run();
    report("exit");
    return 0;
}
