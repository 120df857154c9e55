#include "platform/macos/main_bundle/translocation.h"

#import <CoreFoundation/CoreFoundation.h>
#import <Foundation/Foundation.h>
#include <dlfcn.h>

#include "platform/macos/ns_string.h"

namespace platform::macos {
namespace {

constexpr const char* kSecurityFramework = "/System/Library/Frameworks/Security.framework/Security";

// The Security framework's SecTranslocateIsTranslocatedURL and SecTranslocateCreateOriginalPathForURL
// (macOS 10.12 and later), by their documented behaviour: both take an optional error out-argument
// that follows the create rule.
using IsTranslocatedFunction = Boolean (*)(CFURLRef path, bool* isTranslocated, CFErrorRef _Nullable* _Nullable error);
using OriginalPathFunction = CFURLRef _Nullable (*)(CFURLRef translocatedPath, CFErrorRef _Nullable* _Nullable error);

struct Functions {
    IsTranslocatedFunction isTranslocated = nullptr;
    OriginalPathFunction originalPath = nullptr;
};

// Looked up once; the framework stays loaded for the life of the process, as every app has it.
const Functions& functions() {
    static const Functions found = [] {
        Functions lookedUp;
        void* framework = dlopen(kSecurityFramework, RTLD_LAZY | RTLD_LOCAL);
        if (framework == nullptr) return lookedUp;
        lookedUp.isTranslocated =
            reinterpret_cast<IsTranslocatedFunction>(dlsym(framework, "SecTranslocateIsTranslocatedURL"));
        lookedUp.originalPath =
            reinterpret_cast<OriginalPathFunction>(dlsym(framework, "SecTranslocateCreateOriginalPathForURL"));
        return lookedUp;
    }();
    return found;
}

std::optional<bool> isTranslocated(const std::string& path) {
    @autoreleasepool {
        NSURL* url = fileURLIfUTF8(path);
        if (url == nil) return std::nullopt;
        bool translocated = false;
        if (!functions().isTranslocated((__bridge CFURLRef)url, &translocated, nullptr)) return std::nullopt;
        return translocated;
    }
}

std::optional<std::string> originalPath(const std::string& path) {
    @autoreleasepool {
        NSURL* url = fileURLIfUTF8(path);
        if (url == nil) return std::nullopt;
        NSURL* original = CFBridgingRelease(functions().originalPath((__bridge CFURLRef)url, nullptr));
        if (original.path == nil) return std::nullopt;
        return toStdString(original.path);
    }
}

}  // namespace

TranslocationLookup securityFrameworkTranslocationLookup() {
    if (functions().isTranslocated == nullptr || functions().originalPath == nullptr) return {};
    return {isTranslocated, originalPath};
}

}  // namespace platform::macos
