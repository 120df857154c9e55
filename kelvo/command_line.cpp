#include "command_line.h"

#include <unistd.h>

#include <climits>
#include <cstring>

#include "launch_record.h"

namespace kelvo {

Options readOptions(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--ignore-sigterm") == 0) options.ignoreTerminate = true;
        if (std::strcmp(argv[i], "--exit-now") == 0) options.exitNow = true;
        if (std::strcmp(argv[i], "--eject-installer-volume") == 0 && i + 1 < argc) options.ejectVolume = argv[i + 1];
    }
    return options;
}

void recordStart(int argc, char** argv, const std::string& executable) {
    char folder[PATH_MAX] = {};
    (void)!getcwd(folder, sizeof folder);
    RecordFields fields{{"executable", executable}, {"cwd", folder}, {"argc", std::to_string(argc - 1)}};
    for (int i = 1; i < argc; ++i) fields.emplace_back("arg", argv[i]);
    appendLaunchRecord("started", fields);
}

}  // namespace kelvo
