#include "platform/linux/workspace/proc_entries.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstring>
#include <string_view>

namespace platform::linux_backend {
namespace {

// /proc/<pid>/stat and the lines of /proc/<pid>/status that matter fit well inside this.
constexpr std::size_t kProcFileBuffer = 4096;
// The field of /proc/<pid>/stat that holds the start time, counted from the state field as 0.
constexpr int kStartTimeFieldAfterState = 19;
constexpr std::string_view kDeletedSuffix = " (deleted)";

std::string procPath(std::int32_t pid, const char* entry) {
    return "/proc/" + std::to_string(pid) + "/" + entry;
}

// Reads up to kProcFileBuffer bytes of a /proc file in one go.
std::optional<std::string> readProcFile(const std::string& path) {
    int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return std::nullopt;
    std::string contents(kProcFileBuffer, '\0');
    ssize_t count;
    while ((count = read(fd, contents.data(), contents.size())) < 0 && errno == EINTR) {}
    close(fd);
    if (count <= 0) return std::nullopt;
    contents.resize(static_cast<std::size_t>(count));
    return contents;
}

template <class Number>
std::optional<Number> parseNumber(std::string_view text) {
    Number value{};
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end == text.data()) return std::nullopt;
    return value;
}

// The first number after "<key>:" and its blanks, in a /proc/<pid>/status text.
template <class Number>
std::optional<Number> statusValue(std::string_view status, std::string_view key) {
    std::size_t line = 0;
    while (line < status.size()) {
        std::size_t end = std::min(status.find('\n', line), status.size());
        std::string_view text = status.substr(line, end - line);
        if (text.size() > key.size() && text.starts_with(key) && text[key.size()] == ':') {
            text.remove_prefix(key.size() + 1);
            text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
            return parseNumber<Number>(text);
        }
        line = end + 1;
    }
    return std::nullopt;
}

}  // namespace

std::optional<ProcessState> readProcessState(std::int32_t pid) {
    std::optional<std::string> stat = readProcFile(procPath(pid, "stat"));
    if (!stat) return std::nullopt;
    // The command name in parentheses may itself hold blanks and parentheses: fields start after
    // the last ')'.
    std::size_t close = stat->rfind(')');
    if (close == std::string::npos || close + 2 >= stat->size()) return std::nullopt;
    std::string_view fields = std::string_view(*stat).substr(close + 2);
    ProcessState result;
    result.state = fields.front();
    for (int field = 0; field < kStartTimeFieldAfterState; ++field) {
        std::size_t blank = fields.find(' ');
        if (blank == std::string_view::npos) return std::nullopt;
        fields.remove_prefix(blank + 1);
    }
    std::optional<std::uint64_t> startTime = parseNumber<std::uint64_t>(fields);
    if (!startTime) return std::nullopt;
    result.startTime = *startTime;
    return result;
}

std::optional<ProcessOwner> readProcessOwner(std::int32_t pid) {
    std::optional<std::string> status = readProcFile(procPath(pid, "status"));
    if (!status) return std::nullopt;
    std::optional<std::int32_t> threadGroup = statusValue<std::int32_t>(*status, "Tgid");
    std::optional<std::uint32_t> realUserId = statusValue<std::uint32_t>(*status, "Uid");
    if (!threadGroup || !realUserId) return std::nullopt;
    return ProcessOwner{*threadGroup, *realUserId};
}

std::optional<std::string> readExecutablePath(std::int32_t pid) {
    char target[PATH_MAX];
    ssize_t length = readlink(procPath(pid, "exe").c_str(), target, sizeof target);
    if (length <= 0 || static_cast<std::size_t>(length) >= sizeof target) return std::nullopt;
    std::string path(target, static_cast<std::size_t>(length));
    if (path.ends_with(kDeletedSuffix)) path.resize(path.size() - kDeletedSuffix.size());
    return path;
}

std::vector<std::int32_t> listProcessIdentifiers() {
    std::vector<std::int32_t> identifiers;
    DIR* proc = opendir("/proc");
    if (proc == nullptr) return identifiers;
    while (dirent* entry = readdir(proc)) {
        if (entry->d_name[0] < '1' || entry->d_name[0] > '9') continue;
        if (auto pid = parseNumber<std::int32_t>(entry->d_name)) identifiers.push_back(*pid);
    }
    closedir(proc);
    std::sort(identifiers.begin(), identifiers.end());
    return identifiers;
}

}  // namespace platform::linux_backend
