// The readable text of an error number, safe to use from any thread. Shared by both backends.
#pragma once

#include <string>

namespace platform::posix {

// "No space left on device" for ENOSPC: the system's sentence for `error`, without a full stop.
std::string errorNumberText(int error);

}  // namespace platform::posix
