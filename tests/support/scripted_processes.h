// A scripted process table behind the workspace, child-process, signal, clock and process-info
// services, for unit tests of finding and stopping running copies of Kelvo.
//
// Every service reads and changes one table of processes, and every call is written to one event
// log in the order it was made, so a test can check both the outcome and the exact sequence of
// lookups, signals, listings and pauses. Time is scripted: `sleepFor` advances it at once.
//
// Events: "applications", "run <program> <args…>", "lookup <pid>", "terminate <pid>",
// "forceTerminate <pid>", "kill <pid> <signal>", "sleep <seconds>".
#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/product_identity.h"
#include "platform/services.h"

namespace testing_support {

inline constexpr const char* kKelvoExecutablePath = "/Applications/Kelvo.app/Contents/MacOS/Kelvo";

struct ScriptedProcess {
    std::int32_t pid = 0;

    // How the running-application list shows it; `application` false keeps it off the list and
    // gives it no application object.
    bool application = true;
    std::optional<std::string> bundleIdentifier = engine::kTargetBundleIdentifier;
    std::optional<std::string> executable = kKelvoExecutablePath;
    bool reportsTerminated = false;  // listed, but its handle says it has terminated

    bool listedByTool = true;        // pgrep -x Kelvo names it

    // How it reacts. A polite request (`terminate` accepted, or SIGTERM) ends it after
    // `quitDelay` seconds when `quitsWhenAsked`; `forceTerminate` or SIGKILL end it at once when
    // `quitsWhenForced`.
    bool terminateAccepted = true;
    bool quitsWhenAsked = true;
    double quitDelay = 0;
    bool quitsWhenForced = true;
    int signalError = 0;             // errno of every signal, probes included, while it runs (EPERM)

    // When it has gone, in scripted seconds from the start; none while nothing has ended it. A
    // test may set it to have a process exit by itself.
    std::optional<double> exitTime;
};

class ScriptedSystem {
public:
    using ToolAnswer = platform::Expected<platform::ChildProcessResult, platform::Error>;

    ScriptedSystem();
    ~ScriptedSystem();
    ScriptedSystem(const ScriptedSystem&) = delete;
    ScriptedSystem& operator=(const ScriptedSystem&) = delete;

    std::int32_t ownProcessIdentifier = 100;
    std::uint32_t effectiveUserId = 501;

    // The table, in the platform's order of the running-application list and of pgrep's output.
    std::vector<ScriptedProcess> processes;

    // Answers for the next tool runs, used in order; once used up, the tool answers from the table:
    // status 0 with one line per listed live process, or status 1 with nothing.
    std::deque<ToolAnswer> toolAnswers;

    // Runs `action` once scripted time reaches `secondsElapsed` (checked after every pause).
    void at(double secondsElapsed, std::function<void()> action);

    bool isRunning(std::int32_t pid) const;
    double secondsElapsed() const;
    const std::vector<std::string>& events() const { return events_; }
    // The events without probes ("kill <pid> 0") and pauses: the decisions of a run.
    std::vector<std::string> decisions() const;
    std::size_t countOf(const std::string& event) const;

    // Every service, ready for platform::ScopedServices.
    platform::ServiceTable services();

private:
    class Workspace;
    class Application;
    class Tool;
    class Signals;
    class Clock;
    class Info;

    ScriptedProcess* find(std::int32_t pid);
    void record(std::string event) { events_.push_back(std::move(event)); }
    void requestQuit(std::int32_t pid);
    void forceQuit(std::int32_t pid);
    void advance(platform::Clock::Seconds interval);

    std::vector<std::string> events_;
    std::chrono::system_clock::duration elapsed_{};
    std::vector<std::pair<double, std::function<void()>>> actions_;

    std::unique_ptr<Workspace> workspace_;
    std::unique_ptr<Tool> tool_;
    std::unique_ptr<Signals> signals_;
    std::unique_ptr<Clock> clock_;
    std::unique_ptr<Info> info_;
};

// A tool run that ended with `status` and wrote `output` and `error`.
ScriptedSystem::ToolAnswer toolResult(std::int32_t status, std::string output, std::string error = "");

}  // namespace testing_support
