#include "support/scripted_processes.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace testing_support {
namespace {

// Scripted time starts at a fixed date, so that no test depends on the real clock.
const std::chrono::system_clock::time_point kScriptedEpoch{std::chrono::seconds(1'780'000'000)};
constexpr int kTerminateSignal = 15;
constexpr int kKillSignal = 9;

std::string secondsText(double seconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", seconds);
    return text;
}

}  // namespace

class ScriptedSystem::Application final : public platform::RunningApplication {
public:
    Application(ScriptedSystem& system, std::int32_t pid) : system_(system), pid_(pid) {}

    std::int32_t processIdentifier() const override { return pid_; }
    bool isTerminated() const override {
        ScriptedProcess* process = system_.find(pid_);
        return !system_.isRunning(pid_) || (process && process->reportsTerminated);
    }
    std::optional<std::string> bundleIdentifier() const override { return process().bundleIdentifier; }
    std::optional<platform::FileURL> executableURL() const override {
        if (!process().executable) return std::nullopt;
        return platform::FileURL::fileURLWithPath(*process().executable);
    }
    bool terminate() override {
        system_.record("terminate " + std::to_string(pid_));
        if (!process().terminateAccepted) return false;
        system_.requestQuit(pid_);
        return true;
    }
    bool forceTerminate() override {
        system_.record("forceTerminate " + std::to_string(pid_));
        system_.forceQuit(pid_);
        return true;
    }

private:
    const ScriptedProcess& process() const { return *system_.find(pid_); }

    ScriptedSystem& system_;
    std::int32_t pid_;
};

class ScriptedSystem::Workspace final : public platform::Workspace {
public:
    explicit Workspace(ScriptedSystem& system) : system_(system) {}

    std::vector<std::shared_ptr<platform::RunningApplication>> runningApplications() override {
        system_.record("applications");
        std::vector<std::shared_ptr<platform::RunningApplication>> list;
        for (const ScriptedProcess& process : system_.processes) {
            if (process.application && system_.isRunning(process.pid)) {
                list.push_back(std::make_shared<Application>(system_, process.pid));
            }
        }
        return list;
    }
    std::shared_ptr<platform::RunningApplication> runningApplicationWithProcessIdentifier(std::int32_t pid) override {
        system_.record("lookup " + std::to_string(pid));
        ScriptedProcess* process = system_.find(pid);
        if (!process || !process->application || !system_.isRunning(pid)) return nullptr;
        return std::make_shared<Application>(system_, pid);
    }
    void openApplication(const platform::FileURL&, const platform::OpenConfiguration&,
                         std::function<void(std::optional<platform::Error>)> completion) override {
        system_.record("open");
        completion(platform::Error("Opening applications is not scripted."));
    }

private:
    ScriptedSystem& system_;
};

class ScriptedSystem::Tool final : public platform::ChildProcesses {
public:
    explicit Tool(ScriptedSystem& system) : system_(system) {}

    ToolAnswer run(const std::string& executable, const std::vector<std::string>& arguments) override {
        std::string event = "run " + executable;
        for (const std::string& argument : arguments) event += " " + argument;
        system_.record(event);
        if (!system_.toolAnswers.empty()) {
            ToolAnswer answer = std::move(system_.toolAnswers.front());
            system_.toolAnswers.pop_front();
            return answer;
        }
        std::string output;
        for (const ScriptedProcess& process : system_.processes) {
            if (process.listedByTool && system_.isRunning(process.pid)) output += std::to_string(process.pid) + "\n";
        }
        return toolResult(output.empty() ? 1 : 0, output);
    }

private:
    ScriptedSystem& system_;
};

class ScriptedSystem::Signals final : public platform::ProcessSignals {
public:
    explicit Signals(ScriptedSystem& system) : system_(system) {}

    int kill(std::int32_t pid, int signal) override {
        system_.record("kill " + std::to_string(pid) + " " + std::to_string(signal));
        ScriptedProcess* process = system_.find(pid);
        if (!process || !system_.isRunning(pid)) return ESRCH;
        if (process->signalError != 0) return process->signalError;
        if (signal == kTerminateSignal) system_.requestQuit(pid);
        if (signal == kKillSignal) system_.forceQuit(pid);
        return 0;
    }

private:
    ScriptedSystem& system_;
};

class ScriptedSystem::Clock final : public platform::Clock {
public:
    explicit Clock(ScriptedSystem& system) : system_(system) {}

    std::chrono::system_clock::time_point now() override { return kScriptedEpoch + system_.elapsed_; }
    void sleepFor(Seconds interval) override {
        system_.record("sleep " + secondsText(interval.count()));
        system_.advance(interval);
    }

private:
    ScriptedSystem& system_;
};

class ScriptedSystem::Info final : public platform::ProcessInfo {
public:
    explicit Info(ScriptedSystem& system) : system_(system) {}

    std::vector<std::string> arguments() override { return {"/Volumes/Kelvo/Install Kelvo.app/Contents/MacOS/Install Kelvo"}; }
    std::int32_t processIdentifier() override { return system_.ownProcessIdentifier; }
    std::uint32_t effectiveUserId() override { return system_.effectiveUserId; }

private:
    ScriptedSystem& system_;
};

ScriptedSystem::ScriptedSystem()
    : workspace_(std::make_unique<Workspace>(*this)),
      tool_(std::make_unique<Tool>(*this)),
      signals_(std::make_unique<Signals>(*this)),
      clock_(std::make_unique<Clock>(*this)),
      info_(std::make_unique<Info>(*this)) {}

ScriptedSystem::~ScriptedSystem() = default;

void ScriptedSystem::at(double secondsElapsed, std::function<void()> action) {
    actions_.emplace_back(secondsElapsed, std::move(action));
}

bool ScriptedSystem::isRunning(std::int32_t pid) const {
    auto process = std::find_if(processes.begin(), processes.end(),
                                [pid](const ScriptedProcess& p) { return p.pid == pid; });
    return process != processes.end() && (!process->exitTime || secondsElapsed() < *process->exitTime);
}

double ScriptedSystem::secondsElapsed() const {
    return std::chrono::duration<double>(elapsed_).count();
}

std::vector<std::string> ScriptedSystem::decisions() const {
    std::vector<std::string> kept;
    for (const std::string& event : events_) {
        bool probe = event.starts_with("kill ") && event.ends_with(" 0");
        if (!probe && !event.starts_with("sleep ")) kept.push_back(event);
    }
    return kept;
}

std::size_t ScriptedSystem::countOf(const std::string& event) const {
    return static_cast<std::size_t>(std::count(events_.begin(), events_.end(), event));
}

platform::ServiceTable ScriptedSystem::services() {
    platform::ServiceTable table;
    table.processInfo = info_.get();
    table.workspace = workspace_.get();
    table.childProcesses = tool_.get();
    table.processSignals = signals_.get();
    table.clock = clock_.get();
    return table;
}

ScriptedProcess* ScriptedSystem::find(std::int32_t pid) {
    auto process = std::find_if(processes.begin(), processes.end(),
                                [pid](const ScriptedProcess& p) { return p.pid == pid; });
    return process == processes.end() ? nullptr : &*process;
}

void ScriptedSystem::requestQuit(std::int32_t pid) {
    ScriptedProcess* process = find(pid);
    if (!process || !process->quitsWhenAsked || !isRunning(pid)) return;
    double when = secondsElapsed() + process->quitDelay;
    if (!process->exitTime || when < *process->exitTime) process->exitTime = when;
}

void ScriptedSystem::forceQuit(std::int32_t pid) {
    ScriptedProcess* process = find(pid);
    if (process && process->quitsWhenForced && isRunning(pid)) process->exitTime = secondsElapsed();
}

void ScriptedSystem::advance(platform::Clock::Seconds interval) {
    elapsed_ += std::chrono::round<std::chrono::system_clock::duration>(interval);
    // Actions may add processes or further actions, so take the due ones out first.
    std::vector<std::function<void()>> due;
    for (auto it = actions_.begin(); it != actions_.end();) {
        if (it->first <= secondsElapsed()) {
            due.push_back(std::move(it->second));
            it = actions_.erase(it);
        } else {
            ++it;
        }
    }
    for (auto& action : due) action();
}

ScriptedSystem::ToolAnswer toolResult(std::int32_t status, std::string output, std::string error) {
    return platform::ChildProcessResult{status, std::move(output), std::move(error)};
}

}  // namespace testing_support
