// Scripted services for a machine where no copy of Kelvo runs: an empty application list, and a
// process tool that finds nothing (exit status 1) unless the test makes it fail. Each call is
// logged; the effective user id is the test's to set.
#pragma once

#include "platform/child_process.h"
#include "platform/process_info.h"
#include "platform/workspace.h"
#include "support/install_event_log.h"

namespace testing_support {

class NoKelvoWorkspace final : public platform::Workspace {
public:
    explicit NoKelvoWorkspace(InstallEventLog& log) : log_(log) {}
    std::vector<std::shared_ptr<platform::RunningApplication>> runningApplications() override {
        log_.add("list applications");
        return {};
    }
    std::shared_ptr<platform::RunningApplication> runningApplicationWithProcessIdentifier(std::int32_t) override {
        return nullptr;
    }
    void openApplication(const platform::FileURL&, const platform::OpenConfiguration&,
                         std::function<void(std::optional<platform::Error>)>) override {
        log_.add("open application");
    }

private:
    InstallEventLog& log_;
};

class NoKelvoProcessTool final : public platform::ChildProcesses {
public:
    explicit NoKelvoProcessTool(InstallEventLog& log) : log_(log) {}
    std::int32_t terminationStatus = 1;
    std::string standardError;

    platform::Expected<platform::ChildProcessResult, platform::Error> run(
        const std::string& executable, const std::vector<std::string>&) override {
        log_.add("run " + executable);
        return platform::ChildProcessResult{.terminationStatus = terminationStatus,
                                            .standardOutput = {},
                                            .standardError = standardError};
    }

private:
    InstallEventLog& log_;
};

class ScriptedUserProcessInfo final : public platform::ProcessInfo {
public:
    explicit ScriptedUserProcessInfo(InstallEventLog& log) : log_(log) {}
    std::uint32_t userId = 501;

    std::vector<std::string> arguments() override { return {"Install Kelvo"}; }
    std::int32_t processIdentifier() override { return 4242; }
    std::uint32_t effectiveUserId() override {
        log_.add("effective user id");
        return userId;
    }

private:
    InstallEventLog& log_;
};

}  // namespace testing_support
