// Where the application's icon file is: named by CFBundleIconFile in its bundle's
// Contents/Info.plist and kept in its resources folder. A bare executable outside any bundle, which
// has no Info.plist, uses the conventional name "AppIcon" beside it.
#pragma once

#include <optional>
#include <string>

#include "platform/main_bundle.h"

namespace platform::linux_backend {

// The icon file's path in `bundle`; none when the bundle has no resources folder or the file is
// not there. A name without an extension is taken to be a PNG image ("AppIcon" is "AppIcon.png").
std::optional<std::string> applicationIconPath(MainBundle& bundle);

}  // namespace platform::linux_backend
