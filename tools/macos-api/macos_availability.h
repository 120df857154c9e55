// How these declarations mark what the installer may use and how: API newer than macOS 12.0, the
// oldest system it runs on, carries the version that introduced it, so that the check (which
// compiles for a macOS 12 deployment target) rejects every use not guarded by @available, as the
// SDK does; API that macOS had replaced by then is deprecated, which the check's -Werror turns into
// an error.
#pragma once

#define MACOS_INTRODUCED(version) __attribute__((availability(macos, introduced = version)))
#define MACOS_DEPRECATED(version, replacement) \
    __attribute__((deprecated("first deprecated in macOS " version " - use " replacement)))
#define MACOS_ARC_UNAVAILABLE \
    __attribute__((unavailable("not available in automatic reference counting mode")))
