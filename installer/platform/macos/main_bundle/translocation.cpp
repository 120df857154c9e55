#include "platform/macos/main_bundle/translocation.h"

namespace platform::macos {

std::string pathAsOpened(const std::string& path, const TranslocationLookup& lookup) {
    if (!lookup.isTranslocated || !lookup.originalPath) return path;
    if (lookup.isTranslocated(path) != true) return path;
    return lookup.originalPath(path).value_or(path);
}

}  // namespace platform::macos
