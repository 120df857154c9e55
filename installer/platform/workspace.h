// The running applications of this user, and opening an application bundle.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/error.h"
#include "platform/expected.h"
#include "platform/file_url.h"

namespace platform {

// A handle on one running application. Its answers reflect the process at the moment they are
// asked for; the process may go away at any time.
class RunningApplication {
public:
    virtual ~RunningApplication() = default;

    virtual std::int32_t processIdentifier() const = 0;

    // True once the process has exited (a zombie counts as exited).
    virtual bool isTerminated() const = 0;

    // The bundle identifier from the application's Info.plist; none when it has none.
    virtual std::optional<std::string> bundleIdentifier() const = 0;

    // The application's executable; none when it cannot be told.
    virtual std::optional<FileURL> executableURL() const = 0;

    // Asks the application to quit. True when the request was delivered.
    virtual bool terminate() = 0;

    // Makes the application quit at once. True when the request was delivered.
    virtual bool forceTerminate() = 0;
};

// How an application is to be opened.
struct OpenConfiguration {
    // The opened application's command line (after its program path). None leaves the default:
    // no arguments.
    std::optional<std::vector<std::string>> arguments;

    // Whether the opened application is brought to the front.
    bool activates = true;
};

class Workspace {
public:
    virtual ~Workspace() = default;

    // A snapshot of the running applications of this user, in the platform's order.
    virtual std::vector<std::shared_ptr<RunningApplication>> runningApplications() = 0;

    // The running application with this process identifier; none when that process is not an
    // application of this user (or does not exist).
    virtual std::shared_ptr<RunningApplication>
    runningApplicationWithProcessIdentifier(std::int32_t pid) = 0;

    // Opens the application bundle at `url` with `configuration` and returns at once. Later, on a
    // thread of its own choosing, calls `completion` exactly once: with success when the
    // application was started, or with the error that prevented it.
    using OpenCompletion = std::function<void(Expected<void, Error>)>;
    virtual void openApplication(const FileURL& url, const OpenConfiguration& configuration,
                                 OpenCompletion completion) = 0;
};

}  // namespace platform
