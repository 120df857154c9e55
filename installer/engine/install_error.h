// The install engine's one error type: five cases, each with one fixed English message.
//
// An `InstallError` is an immutable value, cheap to copy across threads. Whoever shows it uses only
// its localized description, which is exactly the case's message. It defines no equality or code.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "platform/error.h"

namespace engine {

class InstallError final : public platform::LocalizedError {
public:
    // The check for running copies of Kelvo could not be carried out.
    static InstallError processInspectionFailed(std::string detail);
    // Copies of Kelvo were still running after being asked, then forced, to quit. The list is
    // kept in the order given, neither sorted nor checked.
    static InstallError runningKelvoProcesses(std::vector<std::int32_t> processIdentifiers);
    // The bundle could not be put in place, or the copy is incomplete.
    static InstallError copyFailed(std::string detail);
    // The bundle was installed but could not be started.
    static InstallError launchFailed(std::string detail);
    // The installer's own resources hold no Kelvo.app.
    static InstallError embeddedAppMissing();

    // The case's message; present for every case.
    std::optional<std::string> errorDescription() const override;

private:
    struct ProcessInspectionFailed { std::string detail; };
    struct RunningKelvoProcesses { std::vector<std::int32_t> processIdentifiers; };
    struct CopyFailed { std::string detail; };
    struct LaunchFailed { std::string detail; };
    struct EmbeddedAppMissing {};
    using Case = std::variant<ProcessInspectionFailed, RunningKelvoProcesses, CopyFailed,
                              LaunchFailed, EmbeddedAppMissing>;

    explicit InstallError(Case value) : case_(std::move(value)) {}

    Case case_;
};

}  // namespace engine
