#include "platform/macos/ns_error.h"

#import <Foundation/Foundation.h>

#include "platform/macos/ns_string.h"

namespace platform::macos {

Error errorFromNSError(NSError* error, const std::string& fallback) {
    if (error == nil) return Error(fallback);
    return Error(toStdString(error.localizedDescription));
}

}  // namespace platform::macos
