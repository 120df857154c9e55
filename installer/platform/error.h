// Errors as the platform reports them, and the role every error shown to a user plays.
//
// Nothing in the installer reads more of a platform error than its localized description, so a
// platform failure crosses into portable code as `platform::Error`: one readable sentence, made at
// the boundary of the backend that failed. Beside it an error may carry what a caller acts on: the C
// library's error number when a system call failed (kill's ESRCH), and the entries a failure reports
// by key (an AppleScript's error information), as Foundation's errors carry a code and user info.
// Every fallible platform operation answers with `Expected<T, Error>`.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>

#include "platform/expected.h"

namespace platform {

// The localized-error role: an error that can describe itself to the user. The application shows an
// error only through `localizedDescription()`.
class LocalizedError {
public:
    virtual ~LocalizedError() = default;

    virtual std::optional<std::string> errorDescription() const = 0;
    virtual std::optional<std::string> failureReason() const { return std::nullopt; }
    virtual std::optional<std::string> recoverySuggestion() const { return std::nullopt; }
    virtual std::optional<std::string> helpAnchor() const { return std::nullopt; }

    // `errorDescription()` when present, otherwise a generic sentence.
    std::string localizedDescription() const;
};

// A failure reported by a platform service: a plain copyable value.
class Error final : public LocalizedError {
public:
    // Entries by key, each a text or a number.
    using Info = std::map<std::string, std::variant<std::string, std::int64_t>>;

    explicit Error(std::string description, Info info = {});

    // The failure of a C library call that set the error number `number`: the system's sentence for
    // it ("No space left on device", without a full stop) is the description.
    static Error fromErrorNumber(int number);

    std::optional<std::string> errorDescription() const override { return description_; }

    // The C library's error number, for an error made by `fromErrorNumber`.
    std::optional<int> errorNumber() const { return errorNumber_; }

    const Info& info() const { return info_; }

private:
    std::string description_;
    std::optional<int> errorNumber_;
    Info info_;
};

// The failure of a C library call that set the error number `number` (see Error::fromErrorNumber).
Expected<void, Error> errorNumberFailure(int number);

// The system's sentence for the error number `number`, without a full stop: "No space left on device".
std::string errorNumberText(int number);

// `name` the way every message shows a name: between typographic quotes, as in “Kelvo.app”.
std::string quoted(const std::string& name);

}  // namespace platform
