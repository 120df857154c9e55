// The installer's options and the install operations.
//
// An `Installer` is an immutable two-field value read from the command line: where to install
// (`--dest FOLDER`, default "/Applications") and whether to open the app afterwards (`--no-launch`
// turns it off). The places it reports are worked out afresh from the platform services on every
// request; nothing is cached. Copies may be used from any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "engine/install_error.h"
#include "platform/error.h"
#include "platform/expected.h"
#include "platform/file_url.h"

namespace engine {

// Process identifiers: 32-bit signed, without duplicates, ascending.
using ProcessIdentifiers = std::vector<std::int32_t>;

class Installer {
public:
    // Reads the process's own argument list, element 0 included.
    Installer();

    // Reads `arguments`, element 0 first. The first "--dest" takes the element after it verbatim
    // (if any); "--no-launch" anywhere turns launching off; everything else is ignored.
    explicit Installer(const std::vector<std::string>& arguments);

    const std::string& destinationDir() const { return destinationDir_; }
    bool launchAfterInstall() const { return launchAfterInstall_; }

    // Kelvo.app in the installer's resources folder; none when nothing of that name is there.
    std::optional<platform::FileURL> embeddedAppURL() const;

    // Kelvo.app inside `destinationDir()`.
    platform::FileURL destinationURL() const;

    // "/Volumes/<name>" when the installer's bundle lies on a mounted volume; none otherwise.
    std::optional<std::string> installerVolumePath() const;

    // Performs the install: checks the embedded bundle, waits its turn if another process is
    // installing into the same place, stops running copies of Kelvo, replaces the bundle at the
    // destination (with the administrator-privileged fallback when the plain copy fails) and
    // checks that the copy is complete. Blocks the calling thread throughout; never call it on the
    // main thread.
    platform::Expected<void, InstallError> install() const;

    // Opens the installed Kelvo, brought to the front, with "--eject-installer-volume <volume>"
    // when the installer runs from a mounted volume and with no arguments otherwise. Returns at
    // once; `completion` is called exactly once, later, on the main queue, with none on success or
    // the platform's error. Does not look at `launchAfterInstall()`.
    using LaunchCompletion = std::function<void(std::optional<platform::Error>)>;
    void launchInstalledApp(LaunchCompletion completion) const;

private:
    friend struct InstallerTestAccess;

    // The running copies of Kelvo other than this process, from the running-application list and
    // from pgrep, merged and ascending.
    platform::Expected<ProcessIdentifiers, InstallError> runningKelvoProcessIdentifiers() const;

    // Asks running copies to quit, then forces them; fails when some are still running.
    platform::Expected<void, InstallError> stopRunningInstances() const;

    // Polls until every process in `processIdentifiers` has exited or `timeout` seconds have
    // passed. True when all had exited at the last test.
    bool waitForProcessesToExit(const ProcessIdentifiers& processIdentifiers, double timeout) const;

    // `text` in single quotes for the shell.
    static std::string shellQuoted(const std::string& text);

    // The shell command that stops Kelvo and replaces the bundle, run with administrator rights.
    static std::string privilegedInstallCommand(const std::string& sourcePath,
                                                const std::string& destinationPath,
                                                std::uint32_t effectiveUserId);

    // Runs the privileged command through AppleScript; `plainCopyError` supplies the detail when
    // the script says nothing better.
    platform::Expected<void, InstallError> runPrivilegedInstall(
        const std::string& sourcePath, const std::string& destinationPath,
        const platform::Error& plainCopyError) const;

    std::string destinationDir_;
    bool launchAfterInstall_;
};

}  // namespace engine
