// Where the user opened a bundle that Gatekeeper runs translocated.
//
// Opened from a quarantined disk image that is not signed with a Developer ID, an app runs from a
// random read-only mirror of its folder (App Translocation), not from where the user opened it. The
// Security framework maps such a path back to the original, through two functions it exports but
// does not declare publicly; they are looked up at run time and may be missing or fail.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace platform::macos {

struct TranslocationLookup {
    // Whether `path` is a translocated one; none when that cannot be told.
    std::function<std::optional<bool>(const std::string& path)> isTranslocated;
    // The original of the translocated `path`; none when it cannot be told.
    std::function<std::optional<std::string>(const std::string& path)> originalPath;
};

// `path` as the user opened it: the original of a translocated path; `path` itself when it is not
// translocated or whenever `lookup` cannot answer.
std::string pathAsOpened(const std::string& path, const TranslocationLookup& lookup);

// The Security framework's own lookup. Each call loads nothing new: the functions are looked up
// once, on first use.
TranslocationLookup securityFrameworkTranslocationLookup();

}  // namespace platform::macos
