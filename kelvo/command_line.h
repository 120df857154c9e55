// The stand-in Kelvo's command line, the same on Linux and macOS, and the record of its start.
//
//   Kelvo [--eject-installer-volume MOUNT_POINT] [--ignore-sigterm] [--exit-now]
//
// --eject-installer-volume  ejects the volume at MOUNT_POINT as soon as it is no longer busy (see
//                           volume_eject.h), records the outcome, and keeps running.
// --ignore-sigterm          SIGTERM is ignored, and on macOS a request to quit is refused (its
//                           delegate answers NSTerminateCancel and the refusal is recorded); only
//                           SIGKILL, SIGINT or SIGHUP end it: the copy that the installer has to
//                           force.
// --exit-now                records the start and exits at once.
//
// Otherwise SIGTERM, SIGINT and SIGHUP end it (and on macOS a request to quit). Where the record
// goes: launch_record.h.
#pragma once

#include <string>

namespace kelvo {

struct Options {
    bool ignoreTerminate = false;
    bool exitNow = false;
    const char* ejectVolume = nullptr;  // the MOUNT_POINT given, if any
};

Options readOptions(int argc, char** argv);

// Records the start: `executable` is the program's own path; the working folder and the
// arguments are read here.
void recordStart(int argc, char** argv, const std::string& executable);

}  // namespace kelvo
