#include "platform/macos/file_manager.h"

#import <Foundation/Foundation.h>

#include "platform/macos/ns_error.h"
#include "platform/macos/ns_string.h"

namespace platform::macos {
namespace {

std::string quoted(const FileURL& url) { return "\u201C" + url.path() + "\u201D"; }

// The file URL of `url`; nil when its path is not UTF-8, as no macOS file name is.
NSURL* _Nullable toNSURL(const FileURL& url) {
    NSString* path = toNSStringIfUTF8(url.path());
    return path != nil ? [NSURL fileURLWithPath:path] : nil;
}

Error notUTF8(const FileURL& url) { return Error("The path " + quoted(url) + " is not valid UTF-8."); }

}  // namespace

bool MacFileManager::fileExistsAtPath(const std::string& path) {
    @autoreleasepool {
        NSString* existing = toNSStringIfUTF8(path);
        return existing != nil && [NSFileManager.defaultManager fileExistsAtPath:existing];
    }
}

std::string MacFileManager::currentDirectoryPath() {
    @autoreleasepool {
        return toStdString(NSFileManager.defaultManager.currentDirectoryPath);
    }
}

std::optional<Error> MacFileManager::removeItem(const FileURL& url) {
    @autoreleasepool {
        NSURL* item = toNSURL(url);
        if (item == nil) return notUTF8(url);
        NSError* error = nil;
        if ([NSFileManager.defaultManager removeItemAtURL:item error:&error]) return std::nullopt;
        return errorFromNSError(error, "Could not remove " + quoted(url) + ".");
    }
}

std::optional<Error> MacFileManager::copyItem(const FileURL& from, const FileURL& to) {
    @autoreleasepool {
        NSURL* source = toNSURL(from);
        if (source == nil) return notUTF8(from);
        NSURL* destination = toNSURL(to);
        if (destination == nil) return notUTF8(to);
        NSError* error = nil;
        if ([NSFileManager.defaultManager copyItemAtURL:source toURL:destination error:&error]) {
            return std::nullopt;
        }
        return errorFromNSError(error, "Could not copy " + quoted(from) + " to " + quoted(to) + ".");
    }
}

}  // namespace platform::macos
