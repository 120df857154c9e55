#include "platform/error.h"

namespace platform {

std::string LocalizedError::localizedDescription() const {
    if (auto description = errorDescription()) return *description;
    return "The operation couldn\u2019t be completed.";
}

}  // namespace platform
