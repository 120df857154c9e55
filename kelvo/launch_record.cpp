#include "launch_record.h"

#include <fcntl.h>
#include <unistd.h>

#include <time.h>

#include <cstdio>
#include <cstdlib>

namespace kelvo {
namespace {

constexpr const char* kRecordVariable = "KELVO_LAUNCH_RECORD";
constexpr const char* kRecordFileName = "kelvo-launches.log";

std::string escaped(const std::string& text) {
    std::string out;
    for (char c : text) {
        if (c == '\\') out += "\\\\";
        else if (c == '\t') out += "\\t";
        else if (c == '\n') out += "\\n";
        else out += c;
    }
    return out;
}

// Seconds on the monotonic clock, which every process of the machine shares: a test can set the
// moment Kelvo started against the moment the installer ended.
std::string monotonicStamp() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    char text[40];
    std::snprintf(text, sizeof text, "%lld.%06ld", static_cast<long long>(now.tv_sec), now.tv_nsec / 1000);
    return text;
}

}  // namespace

std::string launchRecordPath() {
    if (const char* named = std::getenv(kRecordVariable); named && *named) return named;
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    return std::string(runtime && *runtime ? runtime : "/tmp") + "/" + kRecordFileName;
}

void appendLaunchRecord(const std::string& event, const RecordFields& fields) {
    std::string line = "pid=" + std::to_string(getpid()) + "\tevent=" + escaped(event) + "\tmonotonic=" +
                       monotonicStamp();
    for (const auto& [key, value] : fields) line += "\t" + key + "=" + escaped(value);
    line += "\n";
    int file = open(launchRecordPath().c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    if (file < 0) return;
    (void)!write(file, line.data(), line.size());
    close(file);
}

}  // namespace kelvo
