// A stand-in for Kelvo: a real app bundle's executable that records how it was started and runs
// until it is asked to quit.
//
//   Kelvo [--eject-installer-volume MOUNT_POINT] [--ignore-sigterm] [--exit-now]
//
// --eject-installer-volume  unmounts MOUNT_POINT as soon as it is no longer busy (see
//                           volume_eject.h), records the outcome, and keeps running.
// --ignore-sigterm          SIGTERM is ignored; only SIGKILL, SIGINT or SIGHUP end it: the copy
//                           that the installer has to force.
// --exit-now                records the start and exits at once.
//
// Otherwise SIGTERM, SIGINT and SIGHUP end it. Where the record goes: launch_record.h.
#include <signal.h>
#include <unistd.h>

#include <climits>
#include <cstring>
#include <thread>

#include "launch_record.h"
#include "volume_eject.h"

namespace {

struct Options {
    bool ignoreTerminate = false;
    bool exitNow = false;
    const char* ejectVolume = nullptr;
};

Options readOptions(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--ignore-sigterm") == 0) options.ignoreTerminate = true;
        if (std::strcmp(argv[i], "--exit-now") == 0) options.exitNow = true;
        if (std::strcmp(argv[i], "--eject-installer-volume") == 0 && i + 1 < argc) options.ejectVolume = argv[i + 1];
    }
    return options;
}

void recordStart(int argc, char** argv) {
    char executable[PATH_MAX] = {};
    (void)!readlink("/proc/self/exe", executable, sizeof executable - 1);
    char folder[PATH_MAX] = {};
    (void)!getcwd(folder, sizeof folder);
    kelvo::RecordFields fields{{"executable", executable}, {"cwd", folder}, {"argc", std::to_string(argc - 1)}};
    for (int i = 1; i < argc; ++i) fields.emplace_back("arg", argv[i]);
    kelvo::appendLaunchRecord("started", fields);
}

}  // namespace

int main(int argc, char** argv) {
    Options options = readOptions(argc, argv);
    recordStart(argc, argv);
    if (options.exitNow) return 0;

    // Blocked before any thread starts, so every thread inherits the mask and only sigwait sees them.
    sigset_t quitSignals;
    sigemptyset(&quitSignals);
    sigaddset(&quitSignals, SIGINT);
    sigaddset(&quitSignals, SIGHUP);
    if (options.ignoreTerminate) {
        signal(SIGTERM, SIG_IGN);
    } else {
        sigaddset(&quitSignals, SIGTERM);
    }
    sigprocmask(SIG_BLOCK, &quitSignals, nullptr);

    if (options.ejectVolume) {
        std::thread([volume = std::string(options.ejectVolume)] {
            std::string outcome = kelvo::ejectVolume(volume);
            kelvo::appendLaunchRecord("eject", {{"volume", volume}, {"outcome", outcome}});
        }).detach();
    }
    int received = 0;
    sigwait(&quitSignals, &received);
    kelvo::appendLaunchRecord("quit", {{"signal", std::to_string(received)}});
    return 0;
}
