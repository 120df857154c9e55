#include "platform/error.h"

#include <string.h>

namespace platform {
namespace {

// glibc's strerror_r returns the text, which may or may not be in the buffer; the POSIX one (as on
// macOS) returns a status and leaves the text, "Unknown error: N" included, in the buffer.
// Overloading on the result picks whichever the C library declares.
[[maybe_unused]] std::string textOf(const char* text, const char*) { return text; }
[[maybe_unused]] std::string textOf(int, const char* buffer) { return buffer; }

}  // namespace

std::string LocalizedError::localizedDescription() const {
    if (auto description = errorDescription()) return *description;
    return "The operation couldn\u2019t be completed.";
}

Error::Error(std::string description, Info info) : description_(std::move(description)), info_(std::move(info)) {}

Error Error::fromErrorNumber(int number) {
    Error error(errorNumberText(number));
    error.errorNumber_ = number;
    return error;
}

Expected<void, Error> errorNumberFailure(int number) {
    return Expected<void, Error>::failure(Error::fromErrorNumber(number));
}

std::string errorNumberText(int number) {
    char buffer[256] = {};
    return textOf(strerror_r(number, buffer, sizeof buffer), buffer);
}

std::string quoted(const std::string& name) { return "\u201C" + name + "\u201D"; }

}  // namespace platform
