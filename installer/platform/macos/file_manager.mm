#include "platform/macos/file_manager.h"

#import <Foundation/Foundation.h>
#include <sys/xattr.h>

#include "platform/macos/file_manager/attribute_removal.h"
#include "platform/macos/ns_error.h"
#include "platform/macos/ns_string.h"
#include "platform/posix/copy_into_itself.h"
#include "platform/posix/item_lock.h"

namespace platform::macos {
namespace {

using Result = Expected<void, Error>;

Result notUTF8(const FileURL& url) {
    return Result::failure(Error("The path " + quoted(url.path()) + " is not valid UTF-8."));
}

// The mark a downloaded file and every item read from a downloaded disk image carry.
constexpr const char* kQuarantineAttribute = "com.apple.quarantine";

int removeOwnAttribute(const char* path, const char* name) { return removexattr(path, name, XATTR_NOFOLLOW); }

}  // namespace

bool MacFileManager::fileExistsAtPath(const std::string& path) {
    @autoreleasepool {
        NSString* existing = toNSStringIfUTF8(path);
        return existing != nil && [NSFileManager.defaultManager fileExistsAtPath:existing];
    }
}

Result MacFileManager::removeItem(const FileURL& url) {
    @autoreleasepool {
        NSURL* item = fileURLIfUTF8(url.path());
        if (item == nil) return notUTF8(url);
        NSError* error = nil;
        if ([NSFileManager.defaultManager removeItemAtURL:item error:&error]) return {};
        return Result::failure(errorFromNSError(error, "Could not remove " + quoted(url.path()) + "."));
    }
}

Result MacFileManager::copyItem(const FileURL& from, const FileURL& to) {
    // Foundation would start writing a folder into itself; refuse before anything is written.
    if (Result allowed = posix::ensureNotIntoItself(from.path(), to.path()); !allowed) return allowed;
    @autoreleasepool {
        NSURL* source = fileURLIfUTF8(from.path());
        if (source == nil) return notUTF8(from);
        NSURL* destination = fileURLIfUTF8(to.path());
        if (destination == nil) return notUTF8(to);
        NSError* error = nil;
        if ([NSFileManager.defaultManager copyItemAtURL:source toURL:destination error:&error]) {
            // Foundation copies the quarantine mark. A copy that keeps it is not one the Finder
            // moved into place: on its first launches Gatekeeper would run it translocated, from a
            // random read-only path, which breaks its updates and whatever looks beside its bundle.
            removeAttributeFromTree(to.path(), kQuarantineAttribute, removeOwnAttribute);
            return {};
        }
        return Result::failure(
            errorFromNSError(error, "Could not copy " + quoted(from.path()) + " to " + quoted(to.path()) + "."));
    }
}

Expected<std::unique_ptr<ItemLock>, Error> MacFileManager::lockItem(const FileURL& url) {
    return posix::lockItemAt(url.path());
}

}  // namespace platform::macos
