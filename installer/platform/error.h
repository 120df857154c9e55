// Errors as the platform reports them, and the role every error shown to a user plays.
//
// Nothing in the installer reads more of a platform error than its localized description, so a
// platform failure crosses into portable code as `platform::Error`: one readable sentence, made at
// the boundary of the backend that failed.
#pragma once

#include <optional>
#include <string>

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

// A failure reported by a platform service: a plain copyable value holding its description.
class Error final : public LocalizedError {
public:
    explicit Error(std::string description) : description_(std::move(description)) {}

    std::optional<std::string> errorDescription() const override { return description_; }

private:
    std::string description_;
};

}  // namespace platform
