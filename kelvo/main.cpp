// The stand-in Kelvo on Linux: a real app bundle's executable that records how it was started and
// runs until a signal ends it. Its command line: command_line.h.
#include <unistd.h>

#include <climits>
#include <string>
#include <thread>

#include "command_line.h"
#include "launch_record.h"
#include "quit_signals.h"
#include "volume_eject.h"

namespace {

std::string ownExecutable() {
    char path[PATH_MAX] = {};
    (void)!readlink("/proc/self/exe", path, sizeof path - 1);
    return path;
}

}  // namespace

int main(int argc, char** argv) {
    kelvo::Options options = kelvo::readOptions(argc, argv);
    kelvo::recordStart(argc, argv, ownExecutable());
    if (options.exitNow) return 0;

    sigset_t quitSignals = kelvo::blockQuitSignals(options.ignoreTerminate);
    if (options.ejectVolume) {
        std::thread([volume = std::string(options.ejectVolume)] {
            std::string outcome = kelvo::ejectVolume(volume);
            kelvo::appendLaunchRecord("eject", {{"volume", volume}, {"outcome", outcome}});
        }).detach();
    }
    int received = kelvo::waitForQuitSignal(quitSignals);
    kelvo::appendLaunchRecord("quit", {{"signal", std::to_string(received)}});
    return 0;
}
