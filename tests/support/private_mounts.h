// Small file systems a test mounts for itself, seen by nobody else: the test process moves into
// a mount namespace of its own first, so nothing it mounts outlives it or shows on the machine.
#pragma once

#include <optional>
#include <string>

namespace testing_support {

// Moves this (single-threaded) process into a private mount namespace. None on success,
// otherwise why it could not (not root, no namespaces), for GTEST_SKIP.
std::optional<std::string> enterPrivateMountNamespace();

// A tmpfs mounted at an existing folder with `options` ("size=1m", "ro"...), unmounted on
// destruction.
class TmpfsMount {
public:
    TmpfsMount(const std::string& folder, const std::string& options);
    ~TmpfsMount();
    TmpfsMount(const TmpfsMount&) = delete;
    TmpfsMount& operator=(const TmpfsMount&) = delete;

    // None when mounted, otherwise why not.
    const std::optional<std::string>& failure() const { return failure_; }
    // Makes the mount read-only from now on.
    bool remountReadOnly();

private:
    std::string folder_;
    std::optional<std::string> failure_;
};

// A FUSE file system mounted at an existing folder whose server never answers: every look-up
// below the folder waits, as on a network mount whose server has gone away. Destruction ends the
// connection, which fails every waiting call, and unmounts it.
class StalledMount {
public:
    explicit StalledMount(const std::string& folder);
    ~StalledMount();
    StalledMount(const StalledMount&) = delete;
    StalledMount& operator=(const StalledMount&) = delete;

    // None when mounted, otherwise why not.
    const std::optional<std::string>& failure() const { return failure_; }

private:
    std::string folder_;
    int connection_ = -1;
    std::optional<std::string> failure_;
};

}  // namespace testing_support
