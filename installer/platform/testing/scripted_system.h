// One scripted machine behind every platform service, for unit tests: a table of processes on a
// clock of scripted time, a set of paths, AppleScript, the dispatch queues, the installer's own
// bundle and command line. Every call a service receives goes into one log, in the order it was
// made, so that a test can check both an outcome and the steps that led to it.
//
// Log entries: "applications <seconds elapsed>", "lookup|terminate|forceTerminate <pid>",
// "run <program> <arguments…>", "kill <pid> <signal>" (not signal 0, which only probes),
// "exists|remove|lock|unlock <path>", "copy <from> <to>", "script", "execute",
// "open <path> [<arguments…>] activated", "main", "after <seconds>", "background". While a
// background task runs, entries begin with "background: ". The scripted toolkit adds its own.
#pragma once

#include <algorithm>
#include <cerrno>
#include <deque>
#include <set>
#include <sstream>

#include "engine/product_identity.h"
#include "platform/services.h"

namespace testing_support {

// A running program; by default a copy of Kelvo that both sources list and that quits when asked.
struct ScriptedProcess {
    std::int32_t pid = 0;
    bool application = true;   // on the running-application list, with an application object
    bool listedByTool = true;  // named by pgrep
    std::optional<std::string> bundleIdentifier = engine::kTargetBundleIdentifier;
    std::optional<std::string> executable = "/Applications/Kelvo.app/Contents/MacOS/Kelvo";
    bool refusesTerminate = false;           // `terminate` answers false
    std::optional<double> quitsAfter = 0.0;  // seconds from a polite request to its end; none: ignores it
    bool quitsWhenForced = true;
    int signalError = 0;                     // every signal to it fails with this (EPERM: another user's)
    double startTime = 0;                    // when it started, in scripted seconds
    std::optional<double> exitTime;          // when it ended; the application list may still hold it
};

class ScriptedSystem final : public platform::ProcessInfo, public platform::MainBundle,
                             public platform::FileManager, public platform::Workspace,
                             public platform::ChildProcesses, public platform::ProcessSignals,
                             public platform::Clock, public platform::AppleScriptRunner,
                             public platform::Dispatch {
public:
    using ToolAnswer = platform::Expected<platform::ChildProcessResult, platform::Error>;

    // By default the installer (process 100) runs from its disk image, carries Kelvo.app and finds
    // nothing running.
    std::vector<std::string> commandLine = {"/Volumes/Kelvo/Install Kelvo.app/Contents/MacOS/Install Kelvo"};
    std::uint32_t userId = 501;
    std::string bundle = "/Volumes/Kelvo/Install Kelvo.app";
    std::optional<std::string> resources = bundle + "/Contents/Resources";

    std::set<std::string> paths = {*resources + "/Kelvo.app", *resources + "/Kelvo.app/Contents/Info.plist"};
    std::optional<std::string> removalError;  // what removeItem fails with
    std::optional<std::string> copyError;     // what copyItem fails with
    bool copiesAreComplete = true;            // a copy (the plain one or a script's) holds Contents/Info.plist

    std::vector<ScriptedProcess> processes;  // in the platform's order
    std::deque<ToolAnswer> toolAnswers;      // pgrep's next answers; then it answers from `processes`

    bool refusesScripts = false;                 // scriptWithSource fails
    std::optional<platform::Error::Info> scriptError;  // the error information running a script reports
    std::vector<std::string> scriptSources;

    platform::Workspace::OpenCompletion openHandler;  // the workspace's pending answer

    std::vector<std::string> log;

    platform::ServiceTable services() { return {this, this, this, this, this, this, this, this, this}; }

    void add(const std::string& entry) { log.push_back((inBackground_ ? "background: " : "") + entry); }

    // The log joined with ", ", without the entries that begin with `skipped`, if given.
    std::string events(std::string_view skipped = {}) const {
        std::string joined;
        for (const std::string& entry : log) {
            if (skipped.empty() || !entry.starts_with(skipped)) joined += (joined.empty() ? "" : ", ") + entry;
        }
        return joined;
    }

    double elapsed() const { return std::chrono::duration<double>(elapsed_).count(); }

    bool inBackground() const { return inBackground_; }
    void runBackgroundTasks() {
        inBackground_ = true;
        runAll(background_);
        inBackground_ = false;
    }
    void runMainTasks() { runAll(main_); }

    std::vector<std::string> arguments() override { return commandLine; }
    std::int32_t processIdentifier() override { return 100; }
    std::uint32_t effectiveUserId() override { return userId; }

    std::string bundlePath() override { return bundle; }
    std::optional<platform::FileURL> resourceURL() override { return url(resources); }

    using Done = platform::Expected<void, platform::Error>;

    bool fileExistsAtPath(const std::string& path) override { add("exists " + path); return paths.contains(path); }
    Done removeItem(const platform::FileURL& url) override {
        add("remove " + url.path());
        if (removalError) return Done::failure(platform::Error(*removalError));
        std::erase_if(paths, [&](const std::string& path) { return (path + "/").starts_with(url.path() + "/"); });
        return {};
    }
    Done copyItem(const platform::FileURL& from, const platform::FileURL& to) override {
        add("copy " + from.path() + " " + to.path());
        if (copyError) return Done::failure(platform::Error(*copyError));
        paths.insert(to.path());
        if (copiesAreComplete) paths.insert(to.path() + "/Contents/Info.plist");
        return {};
    }
    platform::Expected<std::unique_ptr<platform::ItemLock>, platform::Error> lockItem(const platform::FileURL& url) override {
        add("lock " + url.path());
        return std::unique_ptr<platform::ItemLock>(std::make_unique<Lock>(*this, url.path()));
    }

    std::vector<std::shared_ptr<platform::RunningApplication>> runningApplications() override {
        add("applications " + seconds(elapsed()));
        std::vector<std::shared_ptr<platform::RunningApplication>> list;
        for (const ScriptedProcess& process : processes) {
            if (!process.application || process.startTime > elapsed()) continue;
            list.push_back(std::make_shared<Handle>(*this, process.pid));
        }
        return list;
    }
    std::shared_ptr<platform::RunningApplication> runningApplicationWithProcessIdentifier(std::int32_t pid) override {
        add("lookup " + std::to_string(pid));
        if (!isRunning(pid) || !find(pid)->application) return nullptr;
        return std::make_shared<Handle>(*this, pid);
    }
    void openApplication(const platform::FileURL& url, const platform::OpenConfiguration& configuration,
                         OpenCompletion completion) override {
        std::string entry = "open " + url.path();
        if (configuration.arguments) entry += " [" + joined(*configuration.arguments, " ") + "]";
        add(entry + (configuration.activates ? " activated" : ""));
        openHandler = std::move(completion);
    }

    ToolAnswer run(const std::string& program, const std::vector<std::string>& arguments) override {
        add("run " + program + " " + joined(arguments, " "));
        if (!toolAnswers.empty()) return taken(toolAnswers);
        std::string output;
        for (const ScriptedProcess& process : processes) {
            if (process.listedByTool && isRunning(process.pid)) output += std::to_string(process.pid) + "\n";
        }
        return platform::ChildProcessResult{output.empty() ? 1 : 0, output, ""};
    }

    Done kill(std::int32_t pid, int signal) override {
        if (signal != 0) add("kill " + std::to_string(pid) + " " + std::to_string(signal));
        if (!isRunning(pid)) return platform::errorNumberFailure(ESRCH);
        ScriptedProcess& process = *find(pid);
        if (process.signalError != 0) return platform::errorNumberFailure(process.signalError);
        if (signal == 15) askToQuit(process);
        if (signal == 9) force(process);
        return {};
    }

    std::chrono::system_clock::time_point now() override { return std::chrono::system_clock::time_point(elapsed_); }
    void sleepFor(Seconds interval) override { elapsed_ += std::chrono::round<decltype(elapsed_)>(interval); }

    platform::Expected<std::unique_ptr<platform::AppleScript>, platform::Error> scriptWithSource(
        const std::string& source) override {
        add("script");
        scriptSources.push_back(source);
        if (refusesScripts) return platform::Expected<std::unique_ptr<platform::AppleScript>, platform::Error>::failure(platform::Error("Refused."));
        return std::unique_ptr<platform::AppleScript>(std::make_unique<Script>(*this));
    }

    void mainAsync(Task task) override { add("main"); main_.push_back(std::move(task)); }
    // Run with the main queue's tasks: the log shows the delay.
    void mainAsyncAfter(std::chrono::duration<double> delay, Task task) override {
        add("after " + seconds(delay.count()));
        main_.push_back(std::move(task));
    }
    void globalUserInitiatedAsync(Task task) override { add("background"); background_.push_back(std::move(task)); }

private:
    class Handle final : public platform::RunningApplication {
    public:
        Handle(ScriptedSystem& system, std::int32_t pid) : system_(system), pid_(pid) {}
        std::int32_t processIdentifier() const override { return pid_; }
        bool isTerminated() const override { return !system_.isRunning(pid_); }
        std::optional<std::string> bundleIdentifier() const override { return process().bundleIdentifier; }
        std::optional<platform::FileURL> executableURL() const override { return url(process().executable); }
        bool terminate() override {
            system_.add("terminate " + std::to_string(pid_));
            if (process().refusesTerminate) return false;
            system_.askToQuit(process());
            return true;
        }
        bool forceTerminate() override {
            system_.add("forceTerminate " + std::to_string(pid_));
            system_.force(process());
            return true;
        }

    private:
        ScriptedProcess& process() const { return *system_.find(pid_); }
        ScriptedSystem& system_;
        std::int32_t pid_;
    };

    struct Lock final : platform::ItemLock {
        Lock(ScriptedSystem& system, std::string path) : system(system), path(std::move(path)) {}
        ~Lock() override { system.add("unlock " + path); }
        ScriptedSystem& system;
        std::string path;
    };

    struct Script final : platform::AppleScript {
        explicit Script(ScriptedSystem& system) : system(system) {}
        Done execute() override {
            system.add("execute");
            if (system.scriptError) return Done::failure(platform::Error("The script failed.", *system.scriptError));
            // A script that succeeds installs into the default destination.
            if (system.copiesAreComplete) system.paths.insert("/Applications/Kelvo.app/Contents/Info.plist");
            return {};
        }
        ScriptedSystem& system;
    };

    static std::string seconds(double value) { return (std::ostringstream() << value).str(); }
    static std::optional<platform::FileURL> url(const std::optional<std::string>& path) {
        return path ? std::optional(platform::FileURL::fileURLWithPath(*path)) : std::nullopt;
    }
    static std::string joined(const std::vector<std::string>& pieces, const std::string& separator) {
        std::string text;
        for (const std::string& piece : pieces) text += (text.empty() ? "" : separator) + piece;
        return text;
    }
    template <class Item>
    static Item taken(std::deque<Item>& queue) {
        Item first = std::move(queue.front());
        queue.pop_front();
        return first;
    }
    static void runAll(std::deque<Task>& queue) {
        while (!queue.empty()) taken(queue)();
    }

    ScriptedProcess* find(std::int32_t pid) {
        auto found = std::find_if(processes.begin(), processes.end(), [&](auto& p) { return p.pid == pid; });
        return found == processes.end() ? nullptr : &*found;
    }
    bool isRunning(std::int32_t pid) {
        ScriptedProcess* process = find(pid);
        return process && process->startTime <= elapsed() && (!process->exitTime || elapsed() < *process->exitTime);
    }
    void askToQuit(ScriptedProcess& process) {
        if (process.quitsAfter && !process.exitTime) process.exitTime = elapsed() + *process.quitsAfter;
    }
    void force(ScriptedProcess& process) {
        if (process.quitsWhenForced && isRunning(process.pid)) process.exitTime = elapsed();
    }

    std::chrono::system_clock::duration elapsed_{};
    bool inBackground_ = false;
    std::deque<Task> main_, background_;
};

}  // namespace testing_support
