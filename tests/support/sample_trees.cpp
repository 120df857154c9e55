#include "support/sample_trees.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <map>
#include <stdexcept>
#include <vector>

#include "support/temp_folder.h"

namespace testing_support {
namespace {

namespace fs = std::filesystem;

void check(bool ok, const std::string& what) {
    if (!ok) throw std::runtime_error("making the sample tree: " + what);
}

void attribute(const std::string& path, const std::string& name, const std::string& value) {
    check(lsetxattr(path.c_str(), name.c_str(), value.data(), value.size(), 0) == 0, "xattr " + path);
}

// A file of `size` bytes that holds one page of data in its middle and holes around it.
void writeSparseFile(const std::string& path, off_t size) {
    int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    const std::string page(4096, 's');
    check(fd >= 0 && pwrite(fd, page.data(), page.size(), size / 2) == 4096 && ftruncate(fd, size) == 0 && close(fd) == 0,
          "sparse file " + path);
}

// Distinct times to the nanosecond for every item, set deepest first so that folders keep theirs.
void stampTimes(const std::string& root) {
    std::vector<fs::path> items{root};
    for (const auto& entry : fs::recursive_directory_iterator(root)) items.push_back(entry.path());
    long nanoseconds = 123456789;
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
        nanoseconds += 1000003;
        const timespec times[2] = {{1000000000, nanoseconds % 1000000000}, {1200000000 + nanoseconds / 1000, nanoseconds % 1000000000}};
        check(utimensat(AT_FDCWD, item->c_str(), times, AT_SYMLINK_NOFOLLOW) == 0, "times " + item->string());
    }
}

// Every extended attribute of `path` (not followed), by name.
std::string attributes(const std::string& path) {
    std::vector<char> names(65536), value(65536);
    std::map<std::string, std::string> found;
    for (ssize_t at = 0, size = llistxattr(path.c_str(), names.data(), names.size()); at < size;) {
        std::string name(names.data() + at);
        at += static_cast<ssize_t>(name.size()) + 1;
        ssize_t length = lgetxattr(path.c_str(), name.c_str(), value.data(), value.size());
        found[name] = std::string(value.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    }
    std::string text;
    for (const auto& [name, contents] : found) text += " " + name + "=" + contents;
    return text;
}

std::string describe(const std::string& path) {
    struct stat status{};
    if (lstat(path.c_str(), &status) != 0) return "unreadable";
    std::string text = S_ISDIR(status.st_mode) ? "folder" : S_ISLNK(status.st_mode) ? "link -> " + fs::read_symlink(path).string() : "file";
    if (!S_ISLNK(status.st_mode)) text += " mode " + std::to_string(status.st_mode & 07777);
    text += " owner " + std::to_string(status.st_uid) + ":" + std::to_string(status.st_gid);
    if (S_ISREG(status.st_mode)) {
        text += " size " + std::to_string(status.st_size) + " digest " + std::to_string(std::hash<std::string>{}(readFile(path))) +
                " names " + std::to_string(status.st_nlink);
        if (status.st_blocks * 512 < status.st_size) text += " sparse";
    }
    text += " mtime " + std::to_string(status.st_mtim.tv_sec) + "." + std::to_string(status.st_mtim.tv_nsec);
    return text + attributes(path);
}

}  // namespace

void makeSampleBundle(const std::string& path, std::size_t largeFileSize) {
    const std::string contents = path + "/Contents";
    const std::string framework = contents + "/Frameworks/Kelvo Core.framework";
    writeFile(contents + "/Info.plist", "<plist><dict/></plist>\n");
    writeFile(contents + "/MacOS/Kelvo", "#!/bin/sh\nexit 0\n", 0755);
    writeFile(framework + "/Versions/A/Kelvo Core", std::string(4096, 'k'), 0755);
    writeFile(framework + "/Versions/A/Resources/Info.plist", "<plist/>\n");
    const std::pair<const char*, std::string> links[] = {
        {"A", framework + "/Versions/Current"}, {"Versions/Current/Kelvo Core", framework + "/Kelvo Core"},
        {"Versions/Current/Resources", framework + "/Resources"}, {"../Missing/Nowhere", contents + "/Dangling"},
        {"/etc/hostname", contents + "/Absolute"}};
    for (const auto& [target, link] : links) check(symlink(target, link.c_str()) == 0, "symlink " + link);
    fs::create_directories(contents + "/Resources/Empty Folder");
    writeFile(contents + "/Resources/K\u00e9lvo 'quoted' \"double\" $x `y`.txt", "awkward\n");
    writeFile(contents + "/Resources/Large.bin", std::string(largeFileSize, '\x5a'));
    writeFile(contents + "/Resources/Locked/Inside.txt", "read-only folder\n", 0444);
    writeFile(contents + "/_CodeSignature/CodeResources", "<plist/>\n", 0600);
    writeSparseFile(contents + "/Resources/Sparse.db", 4 << 20);
    check(link((contents + "/MacOS/Kelvo").c_str(), (contents + "/Resources/kelvo-cli").c_str()) == 0, "hard link");
    attribute(contents + "/MacOS/Kelvo", "user.com.apple.quarantine", "0083;5f1;Kelvo;");
    attribute(contents + "/Resources", "user.com.apple.FinderInfo", std::string(32, '\0'));
    attribute(contents + "/Info.plist", "user.kelvo.binary", std::string("\x00\x01\xff", 3));
    if (geteuid() == 0) {
        writeFile(contents + "/MacOS/Helper", "#!/bin/sh\n", 0755);
        check(chown((contents + "/MacOS/Helper").c_str(), 1234, 5678) == 0, "chown");
        check(chmod((contents + "/MacOS/Helper").c_str(), 04755) == 0, "setuid");
        // File capabilities, version 2: cap_net_bind_service, effective.
        attribute(contents + "/MacOS/Helper", "security.capability", std::string("\x01\0\0\x02\0\x04\0\0", 8) + std::string(12, '\0'));
        attribute(framework + "/Resources", "trusted.kelvo.link", "on a link");
    }
    check(chmod((contents + "/Resources/Locked").c_str(), 0555) == 0, "read-only folder");
    check(chmod((contents + "/Resources/Empty Folder").c_str(), 01777) == 0, "sticky folder");
    stampTimes(path);
}

std::string snapshotTree(const std::string& root) {
    std::map<std::string, std::string> items{{".", describe(root)}};
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        items[entry.path().lexically_relative(root).string()] = describe(entry.path());
    }
    std::string text;
    for (const auto& [relative, description] : items) text += relative + ": " + description + "\n";
    return text;
}

}  // namespace testing_support
