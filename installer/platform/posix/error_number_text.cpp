#include "platform/posix/error_number_text.h"

#include <string.h>

namespace platform::posix {
namespace {

// glibc's strerror_r returns the text, which may or may not be in the buffer; the POSIX one (as
// on macOS) returns a status and leaves the text, "Unknown error: N" included, in the buffer.
// Overloading on the result picks whichever the C library declares.
[[maybe_unused]] std::string textOf(const char* text, const char*) { return text; }
[[maybe_unused]] std::string textOf(int, const char* buffer) { return buffer; }

}  // namespace

std::string errorNumberText(int error) {
    char buffer[256] = {};
    return textOf(strerror_r(error, buffer, sizeof buffer), buffer);
}

}  // namespace platform::posix
