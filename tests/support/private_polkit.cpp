#include "support/private_polkit.h"

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <thread>

#include "support/command.h"

namespace testing_support {
namespace {

constexpr const char* kBusFolder = "/run/dbus";
constexpr const char* kRulesFolder = "/etc/polkit-1/rules.d";
constexpr const char* kBusDaemon = "/usr/bin/dbus-daemon";
constexpr const char* kBusClient = "/usr/bin/dbus-send";
constexpr const char* kAuthority = "/usr/lib/polkit-1/polkitd";
constexpr const char* kAuthorityName = "org.freedesktop.PolicyKit1";
constexpr auto kStartTimeout = std::chrono::seconds(10);

// True once `name` has an owner on the system bus.
bool hasOwner(const std::string& name) {
    std::string ask = std::string(kBusClient) +
                      " --system --print-reply --dest=org.freedesktop.DBus /org/freedesktop/DBus"
                      " org.freedesktop.DBus.NameHasOwner string:" + name + " 2>/dev/null";
    return runCommand(ask).output.find("boolean true") != std::string::npos;
}

bool eventually(const std::function<bool()>& done) {
    auto deadline = std::chrono::steady_clock::now() + kStartTimeout;
    while (!done()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return true;
}

std::string ruleAnswering(const std::string& user, const std::string& result) {
    return "polkit.addRule(function(action, subject) {\n"
           "    if (subject.user == \"" + user + "\") return polkit.Result." + result + ";\n"
           "});\n";
}

}  // namespace

PrivatePolkit::PrivatePolkit(const std::string& user, const std::string& result) { failure_ = start(user, result); }

std::optional<std::string> PrivatePolkit::start(const std::string& user, const std::string& result) {
    for (const char* program : {kBusDaemon, kBusClient, kAuthority}) {
        if (access(program, X_OK) != 0) return std::string(program) + " is not installed";
    }
    mkdir(kBusFolder, 0755);  // the bus's own folder, missing where no system bus ever ran
    busFolder_ = std::make_unique<TmpfsMount>(kBusFolder, "mode=0755");
    if (busFolder_->failure()) return busFolder_->failure();
    rulesFolder_ = std::make_unique<TmpfsMount>(kRulesFolder, "mode=0755");
    if (rulesFolder_->failure()) return rulesFolder_->failure();
    writeFile(std::string(kRulesFolder) + "/00-kelvo-test.rules", ruleAnswering(user, result));

    bus_ = std::make_unique<StartedProcess>(kBusDaemon, std::vector<std::string>{"--system", "--nofork", "--nopidfile"});
    if (!eventually([] { return hasOwner("org.freedesktop.DBus"); })) return "the private system bus did not start";
    authority_ = std::make_unique<StartedProcess>(kAuthority, std::vector<std::string>{"--no-debug"});
    if (!eventually([] { return hasOwner(kAuthorityName); })) return "polkitd did not start on the private system bus";
    return std::nullopt;
}

bool PrivatePolkit::dismissRequestsFor(pid_t pid) {
    std::string registered = agentReports_ / "registered";
    agent_ = std::make_unique<StartedProcess>(buildFolder() + "/tests/support/dismissing_polkit_agent",
                                              std::vector<std::string>{std::to_string(pid), registered});
    eventually([&] { return access(registered.c_str(), F_OK) == 0 || agent_->hasExited(); });
    return access(registered.c_str(), F_OK) == 0;
}

}  // namespace testing_support
