// Foundation's errors as the portable code carries them.
#pragma once

#include "platform/error.h"

#ifdef __OBJC__
@class NSError;
#else
class NSError;
#endif

namespace platform::macos {

// The error with `error`'s localized description. A nil `error` (a failure Foundation reported
// without saying why) gives `fallback` instead.
Error errorFromNSError(NSError* error, const std::string& fallback);

}  // namespace platform::macos
