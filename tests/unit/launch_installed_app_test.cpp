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

TEST_F(LaunchInstalledApp, OpensTheInstalledCopyWithTheVolumeToEjectWhenRunFromOne) {
    const std::vector<std::string> eject = {"--eject-installer-volume", "/Volumes/Setup Disk"};
    const struct {
        const char* name;
        std::string bundlePath;
        std::vector<std::string> arguments;
        std::string opened;
        std::optional<std::vector<std::string>> command;
    } rows[] = {
        {"from a volume", "/Volumes/Setup Disk/Extras/Install Kelvo.app", {"x"}, "/Applications/Kelvo.app", eject},
        {"from a local folder", "/Users/someone/Install Kelvo.app", {"x"}, "/Applications/Kelvo.app", std::nullopt},
        {"given destination", "/Volumes/Setup Disk/Install Kelvo.app", {"x", "--dest", "/srv/a b/"},
         "/srv/a b/Kelvo.app", eject},
        {"launching switched off still opens", "/Volumes/Setup Disk/Install Kelvo.app", {"x", "--no-launch"},
         "/Applications/Kelvo.app", eject},
    };
    for (const auto& row : rows) {
        workspace.requests.clear();
        bundle.bundle = row.bundlePath;
        engine::Installer(row.arguments).launchInstalledApp([](std::optional<platform::Error>) {});
        ASSERT_EQ(workspace.requests.size(), 1u) << row.name;
        EXPECT_EQ(workspace.requests[0].url.path(), row.opened) << row.name;
        EXPECT_EQ(workspace.requests[0].configuration.arguments, row.command) << row.name;
        EXPECT_TRUE(workspace.requests[0].configuration.activates) << row.name;
    }
}

TEST_F(LaunchInstalledApp, TheOutcomeIsReportedOnceUnchangedOnTheMainQueue) {
    const std::string description = "The application \u201CKelvo.app\u201D could not be opened: Permission denied.";
    for (std::optional<std::string> reported : {std::optional<std::string>(), std::optional(description)}) {
        workspace.requests.clear();
        std::optional<platform::Error> error;
        if (reported) error = platform::Error(*reported);
        Outcome outcome = launchAndAnswer({"x"}, error);
        EXPECT_EQ(outcome.calls, 1);
        EXPECT_EQ(outcome.thread, std::this_thread::get_id());
        ASSERT_EQ(outcome.error.has_value(), reported.has_value());
        if (reported) {
            EXPECT_EQ(outcome.error->localizedDescription(), *reported);
        }
    }
}

}  // namespace
