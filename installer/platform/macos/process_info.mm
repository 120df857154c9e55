#include "platform/macos/process_info.h"

#import <Foundation/Foundation.h>
#include <unistd.h>

#include "platform/macos/ns_string.h"

namespace platform::macos {

std::vector<std::string> MacProcessInfo::arguments() {
    @autoreleasepool {
        return toStringVector(NSProcessInfo.processInfo.arguments);
    }
}

std::int32_t MacProcessInfo::processIdentifier() { return NSProcessInfo.processInfo.processIdentifier; }

std::uint32_t MacProcessInfo::effectiveUserId() { return static_cast<std::uint32_t>(geteuid()); }

}  // namespace platform::macos
