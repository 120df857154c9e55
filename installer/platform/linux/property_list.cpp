#include "platform/linux/property_list.h"

#include <plist/plist.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>

namespace platform::linux_backend {
namespace {

// Info.plist files are a few kilobytes; anything far larger is not one.
constexpr std::size_t kLargestPropertyList = 4 * 1024 * 1024;

struct PlistFree {
    void operator()(plist_t node) const { plist_free(node); }
};

}  // namespace

std::optional<std::string> propertyListString(const std::string& path, const std::string& key) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    std::string data;
    data.resize(kLargestPropertyList + 1);
    file.read(data.data(), static_cast<std::streamsize>(data.size()));
    data.resize(static_cast<std::size_t>(file.gcount()));
    if (data.empty() || data.size() > kLargestPropertyList) return std::nullopt;

    plist_t parsed = nullptr;
    plist_from_memory(data.data(), static_cast<uint32_t>(data.size()), &parsed);
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
