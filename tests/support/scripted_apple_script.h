// An AppleScript runner that records each source it is given and answers as the test says.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/apple_script.h"
#include "support/install_event_log.h"

namespace testing_support {

class ScriptedAppleScriptRunner final : public platform::AppleScriptRunner {
public:
    explicit ScriptedAppleScriptRunner(InstallEventLog& log) : log_(log) {}

    std::vector<std::string> sources;                          // every source given
    bool refuseSource = false;                                 // scriptWithSource gives none
    std::optional<platform::AppleScriptErrorInfo> failure;     // what execute reports
    std::function<void()> onSuccess = [] {};                   // what a successful run does

    std::unique_ptr<platform::AppleScript> scriptWithSource(const std::string& source) override {
        log_.add("script");
        sources.push_back(source);
        if (refuseSource) return nullptr;
        return std::make_unique<Script>(*this);
    }

private:
    class Script final : public platform::AppleScript {
    public:
        explicit Script(ScriptedAppleScriptRunner& runner) : runner_(runner) {}
        std::optional<platform::AppleScriptErrorInfo> execute() override {
            runner_.log_.add("execute");
            if (!runner_.failure) runner_.onSuccess();
            return runner_.failure;
        }

    private:
        ScriptedAppleScriptRunner& runner_;
    };

    InstallEventLog& log_;
};

}  // namespace testing_support
