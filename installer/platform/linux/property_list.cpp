#include "platform/linux/property_list.h"

#include <fcntl.h>
#include <plist/plist.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>

namespace platform::linux_backend {
namespace {

// Info.plist files are a few kilobytes; anything far larger is not one.
constexpr off_t kLargestPropertyList = 4 * 1024 * 1024;

struct PlistFree {
    void operator()(plist_t node) const { plist_free(node); }
};

// Up to `size` bytes from `fd`: fewer when the file has shrunk since it was measured.
std::string readUpTo(int fd, std::size_t size) {
    std::string data(size, '\0');
    std::size_t filled = 0;
    while (filled < size) {
        ssize_t count = read(fd, data.data() + filled, size - filled);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        filled += static_cast<std::size_t>(count);
    }
    data.resize(filled);
    return data;
}

// The contents of the regular file at `path`, when it is one of at most kLargestPropertyList
// bytes. O_NONBLOCK makes opening a FIFO return at once, where a plain open would wait for a
// writer for good; the kind is then checked on the open descriptor, so nothing can be swapped in
// between the check and the read.
std::optional<std::string> smallRegularFileContents(const std::string& path) {
    int fd = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC);
    if (fd < 0) return std::nullopt;
    std::optional<std::string> contents;
    struct stat status{};
    if (fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && status.st_size <= kLargestPropertyList) {
        contents = readUpTo(fd, static_cast<std::size_t>(status.st_size));
    }
    close(fd);
    return contents;
}

}  // namespace

std::optional<std::string> propertyListString(const std::string& path, const std::string& key) {
    std::optional<std::string> data = smallRegularFileContents(path);
    if (!data || data->empty()) return std::nullopt;

    plist_t parsed = nullptr;
    plist_from_memory(data->data(), static_cast<uint32_t>(data->size()), &parsed);
    std::unique_ptr<void, PlistFree> root(parsed);
    if (!root || plist_get_node_type(root.get()) != PLIST_DICT) return std::nullopt;

    plist_t value = plist_dict_get_item(root.get(), key.c_str());
    if (value == nullptr || plist_get_node_type(value) != PLIST_STRING) return std::nullopt;
    char* text = nullptr;
    plist_get_string_val(value, &text);
    if (text == nullptr) return std::nullopt;
    std::string result(text);
    std::free(text);
    return result;
}

}  // namespace platform::linux_backend
