// The readable text of an error number, safe to use from any thread.
#pragma once

#include <string>

namespace platform::linux_backend {

// "No space left on device" for ENOSPC: the system's sentence for `error`, without a full stop.
std::string errorNumberText(int error);

}  // namespace platform::linux_backend
