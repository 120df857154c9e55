#include "platform/linux/error_number_text.h"

#include <string.h>

namespace platform::linux_backend {

std::string errorNumberText(int error) {
    char buffer[256];
    // The GNU strerror_r: returns the text, which may or may not be in `buffer`.
    return strerror_r(error, buffer, sizeof buffer);
}

}  // namespace platform::linux_backend
