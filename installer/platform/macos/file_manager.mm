#include "platform/macos/file_manager.h"

#import <Foundation/Foundation.h>

#include "platform/macos/ns_error.h"
#include "platform/macos/ns_string.h"

namespace platform::macos {
namespace {

NSURL* toNSURL(const FileURL& url) { return [NSURL fileURLWithPath:toNSString(url.path())]; }

std::string quoted(const FileURL& url) { return "\u201C" + url.path() + "\u201D"; }

}  // namespace

bool MacFileManager::fileExistsAtPath(const std::string& path) {
    @autoreleasepool {
        return [NSFileManager.defaultManager fileExistsAtPath:toNSString(path)];
    }
}

std::string MacFileManager::currentDirectoryPath() {
    @autoreleasepool {
        return toStdString(NSFileManager.defaultManager.currentDirectoryPath);
    }
}

std::optional<Error> MacFileManager::removeItem(const FileURL& url) {
    @autoreleasepool {
        NSError* error = nil;
        if ([NSFileManager.defaultManager removeItemAtURL:toNSURL(url) error:&error]) return std::nullopt;
        return errorFromNSError(error, "Could not remove " + quoted(url) + ".");
    }
}

std::optional<Error> MacFileManager::copyItem(const FileURL& from, const FileURL& to) {
    @autoreleasepool {
        NSError* error = nil;
        if ([NSFileManager.defaultManager copyItemAtURL:toNSURL(from) toURL:toNSURL(to) error:&error]) {
            return std::nullopt;
        }
        return errorFromNSError(error, "Could not copy " + quoted(from) + " to " + quoted(to) + ".");
    }
}

}  // namespace platform::macos
