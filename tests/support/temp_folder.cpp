#include "support/temp_folder.h"

#include <stdlib.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace testing_support {
namespace {

// The mount points below `root` (a test's tmpfs or FUSE mounts), deepest first.
std::vector<std::string> mountsBelow(const std::string& root) {
    std::ifstream table("/proc/self/mountinfo");
    std::vector<std::string> found;
    for (std::string id, parent, device, mountedFrom, mountPoint, rest;
         table >> id >> parent >> device >> mountedFrom >> mountPoint && std::getline(table, rest);) {
        if (mountPoint.starts_with(root + "/")) found.push_back(mountPoint);
    }
    std::sort(found.rbegin(), found.rend());
    return found;
}

}  // namespace

TempFolder::TempFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "kelvo-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
    path_ = pattern;
}

TempFolder::~TempFolder() {
    // A folder with a file system mounted on it cannot be removed, nor can anything above it.
    for (const std::string& mountPoint : mountsBelow(path_)) umount2(mountPoint.c_str(), MNT_DETACH);
    std::error_code ignored;
    // Read-only folders are made writable again, so that everything can go.
    for (auto it = std::filesystem::recursive_directory_iterator(path_, ignored);
         it != std::filesystem::recursive_directory_iterator(); it.increment(ignored)) {
        if (it->is_directory(ignored) && !it->is_symlink(ignored)) chmod(it->path().c_str(), 0755);
    }
    std::filesystem::remove_all(path_, ignored);
}

void writeFile(const std::string& path, const std::string& contents, unsigned mode) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary | std::ios::trunc) << contents;
    chmod(path.c_str(), mode);
}

std::string readFile(const std::string& path) {
    std::ostringstream contents;
    contents << std::ifstream(path, std::ios::binary).rdbuf();
    return contents.str();
}

}  // namespace testing_support
