// What `ditto` does, apart from reading its command line: copying one item to a destination the
// way the macOS tool does.
#pragma once

#include <string>

#include "platform/error.h"

namespace platform::linux_backend {

// The line `ditto --version` prints; tools/install-ditto.sh looks for it to tell this program
// from another one at /usr/bin/ditto.
inline constexpr const char* kDittoVersionLine = "ditto 1.0 (the Kelvo installer project's own)";

// Copies `source` to `destination`, creating the destination's missing parent folders:
// - a folder into a missing destination: the destination becomes a copy of it;
// - a folder into an existing folder: its contents are merged into that folder, items in the
//   way being replaced;
// - anything else into an existing folder: copied into it under its own name;
// - anything else to any other destination: the copy replaces what is there.
// A copy into or onto the source itself is refused before any folder is made.
Expected<void, Error> dittoCopy(const std::string& source, const std::string& destination);

}  // namespace platform::linux_backend
