// How these declarations mark what the installer must not use: API newer than macOS 12.0, the
// oldest system it runs on, is unavailable; API that macOS had replaced by then is deprecated, which
// the check's -Werror turns into an error. On a Linux target clang ignores availability by OS
// version, so these plain attributes stand in for it.
#pragma once

#define MACOS_INTRODUCED(version) __attribute__((unavailable("introduced in macOS " version)))
#define MACOS_DEPRECATED(version, replacement) \
    __attribute__((deprecated("first deprecated in macOS " version " - use " replacement)))
#define MACOS_ARC_UNAVAILABLE \
    __attribute__((unavailable("not available in automatic reference counting mode")))
