#include <gtest/gtest.h>

#include <thread>

#include "engine/installer.h"
#include "platform/services.h"
#include "support/scripted_main_bundle.h"

namespace {

using testing_support::ScriptedMainBundle;

// Records each request to open an application and keeps its handler for the test to answer.
class RecordingWorkspace final : public platform::Workspace {
public:
    struct Request {
        platform::FileURL url;
        platform::OpenConfiguration configuration;
        std::function<void(std::optional<platform::Error>)> handler;
    };
    std::vector<Request> requests;

    std::vector<std::shared_ptr<platform::RunningApplication>> runningApplications() override { return {}; }
    std::shared_ptr<platform::RunningApplication> runningApplicationWithProcessIdentifier(std::int32_t) override {
        return nullptr;
    }
    void openApplication(const platform::FileURL& url, const platform::OpenConfiguration& configuration,
                         std::function<void(std::optional<platform::Error>)> completion) override {
        requests.push_back({url, configuration, std::move(completion)});
    }
};

// A main queue that runs nothing until the test drains it on its own (main) thread.
class QueuedDispatch final : public platform::Dispatch {
public:
    std::vector<Task> mainTasks;

    void mainAsync(Task task) override { mainTasks.push_back(std::move(task)); }
    void mainAsyncAfter(std::chrono::duration<double>, Task) override { ADD_FAILURE() << "no delayed work expected"; }
    void globalUserInitiatedAsync(Task) override { ADD_FAILURE() << "no background work expected"; }

    void drainMainQueue() {
        std::vector<Task> tasks = std::move(mainTasks);
        mainTasks.clear();
        for (Task& task : tasks) task();
    }
};

class LaunchInstalledApp : public testing::Test {
protected:
    RecordingWorkspace workspace;
    QueuedDispatch dispatch;
    ScriptedMainBundle bundle;
    platform::ScopedServices scope{{.mainBundle = &bundle, .workspace = &workspace, .dispatch = &dispatch}};

    struct Outcome {
        int calls = 0;
        std::optional<platform::Error> error;
        std::thread::id thread;
    };

    // Launches with `arguments`, answers the workspace's handler from another thread with
    // `reported`, then runs the main queue.
    Outcome launchAndAnswer(const std::vector<std::string>& arguments, std::optional<platform::Error> reported) {
        Outcome outcome;
        engine::Installer(arguments).launchInstalledApp([&outcome](std::optional<platform::Error> error) {
            ++outcome.calls;
            outcome.error = std::move(error);
            outcome.thread = std::this_thread::get_id();
        });
        EXPECT_EQ(workspace.requests.size(), 1u);
        if (workspace.requests.empty()) return outcome;
        std::thread([&] { workspace.requests.back().handler(reported); }).join();
        EXPECT_EQ(outcome.calls, 0) << "the completion waits for the main queue";
        EXPECT_EQ(dispatch.mainTasks.size(), 1u) << "one hop to the main queue";
        dispatch.drainMainQueue();
        return outcome;
    }
};

TEST_F(LaunchInstalledApp, CommandLineNamesTheVolumeOnlyWhenRunFromOne) {
    const struct {
        std::string bundlePath;
        std::optional<std::vector<std::string>> arguments;
    } rows[] = {
        {"/Volumes/Setup/Install.app", std::vector<std::string>{"--eject-installer-volume", "/Volumes/Setup"}},
        {"/Volumes/Setup Disk/Extras/Install Kelvo.app",
         std::vector<std::string>{"--eject-installer-volume", "/Volumes/Setup Disk"}},
        {"/Users/someone/Downloads/Install Kelvo.app", std::nullopt},
        {"/volumes/Setup/Install.app", std::nullopt},
        {"/Volumes/", std::nullopt},
    };
    for (const auto& row : rows) {
        workspace.requests.clear();
        bundle.bundle = row.bundlePath;
        engine::Installer({"x"}).launchInstalledApp([](std::optional<platform::Error>) {});
        ASSERT_EQ(workspace.requests.size(), 1u) << row.bundlePath;
        EXPECT_EQ(workspace.requests[0].configuration.arguments, row.arguments) << row.bundlePath;
        EXPECT_TRUE(workspace.requests[0].configuration.activates) << row.bundlePath;
        EXPECT_EQ(workspace.requests[0].url.path(), "/Applications/Kelvo.app") << row.bundlePath;
    }
}

TEST_F(LaunchInstalledApp, OpensTheCopyInTheGivenDestination) {
    const struct {
        std::vector<std::string> arguments;
        std::string opened;
    } rows[] = {
        {{"x", "--dest", "/Users/someone/Applications"}, "/Users/someone/Applications/Kelvo.app"},
        {{"x", "--dest", "/opt/apps/"}, "/opt/apps/Kelvo.app"},
        {{"x", "--no-launch", "--dest", "/srv/a b"}, "/srv/a b/Kelvo.app"},
    };
    for (const auto& row : rows) {
        workspace.requests.clear();
        engine::Installer(row.arguments).launchInstalledApp([](std::optional<platform::Error>) {});
        ASSERT_EQ(workspace.requests.size(), 1u) << row.opened;
        EXPECT_EQ(workspace.requests[0].url.path(), row.opened);
    }
}

TEST_F(LaunchInstalledApp, SuccessIsReportedOnceOnTheMainQueue) {
    Outcome outcome = launchAndAnswer({"x"}, std::nullopt);
    EXPECT_EQ(outcome.calls, 1);
    EXPECT_EQ(outcome.error, std::nullopt);
    EXPECT_EQ(outcome.thread, std::this_thread::get_id());
}

TEST_F(LaunchInstalledApp, TheWorkspaceErrorIsPassedOnUnchanged) {
    const std::string description = "The application \u201CKelvo.app\u201D could not be opened: Permission denied.";
    Outcome outcome = launchAndAnswer({"x"}, platform::Error(description));
    EXPECT_EQ(outcome.calls, 1);
    ASSERT_TRUE(outcome.error);
    EXPECT_EQ(outcome.error->localizedDescription(), description);
    EXPECT_EQ(outcome.thread, std::this_thread::get_id());
}

TEST_F(LaunchInstalledApp, OpensEvenWhenLaunchingWasSwitchedOff) {
    bundle.bundle = "/Volumes/Kelvo/Install Kelvo.app";
    Outcome outcome = launchAndAnswer({"x", "--no-launch"}, std::nullopt);
    ASSERT_EQ(workspace.requests.size(), 1u);
    EXPECT_EQ(workspace.requests[0].configuration.arguments,
              (std::vector<std::string>{"--eject-installer-volume", "/Volumes/Kelvo"}));
    EXPECT_EQ(outcome.calls, 1);
}

TEST_F(LaunchInstalledApp, TheVolumeIsAskedForAtLaunchTime) {
    engine::Installer installer({"x"});
    bundle.bundle = "/Applications/Install Kelvo.app";
    installer.launchInstalledApp([](std::optional<platform::Error>) {});
    bundle.bundle = "/Volumes/Later/Install Kelvo.app";
    installer.launchInstalledApp([](std::optional<platform::Error>) {});
    ASSERT_EQ(workspace.requests.size(), 2u);
    EXPECT_EQ(workspace.requests[0].configuration.arguments, std::nullopt);
    EXPECT_EQ(workspace.requests[1].configuration.arguments,
              (std::vector<std::string>{"--eject-installer-volume", "/Volumes/Later"}));
}

}  // namespace
