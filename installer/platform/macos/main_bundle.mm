#include "platform/macos/main_bundle.h"

#import <Foundation/Foundation.h>

#include "platform/macos/main_bundle/translocation.h"
#include "platform/macos/ns_string.h"

namespace platform::macos {

std::string MacMainBundle::bundlePath() {
    @autoreleasepool {
        return pathAsOpened(toStdString(NSBundle.mainBundle.bundlePath), securityFrameworkTranslocationLookup());
    }
}

std::optional<FileURL> MacMainBundle::resourceURL() {
    @autoreleasepool {
        NSString* path = NSBundle.mainBundle.resourceURL.path;
        BOOL isFolder = NO;
        if (path == nil || ![NSFileManager.defaultManager fileExistsAtPath:path isDirectory:&isFolder] ||
            !isFolder) {
            return std::nullopt;
        }
        return FileURL::fileURLWithPath(toStdString(path));
    }
}

}  // namespace platform::macos
