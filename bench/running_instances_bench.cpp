// How long one look for running copies of Kelvo takes on a busy machine: about 2,000 other
// processes of this user and 3 copies of Kelvo running. Prints the median of repeated runs.
#include <benchmark/benchmark.h>

#include <signal.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <vector>

#include "platform/services.h"
#include "engine/installer_test_access.h"

extern char** environ;

namespace {

constexpr int kOtherProcesses = 2000;
constexpr int kKelvoCopies = 3;

// Processes that wait for a signal and die with this program if it dies first.
std::vector<pid_t> startIdleProcesses(int count) {
    std::vector<pid_t> pids;
    for (int i = 0; i < count; ++i) {
        pid_t child = fork();
        if (child < 0) break;
        if (child == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            for (;;) pause();
        }
        pids.push_back(child);
    }
    return pids;
}

std::vector<pid_t> startKelvoCopies(int count) {
    std::vector<pid_t> pids;
    const char* program = KELVO_EXECUTABLE;
    char* argv[] = {const_cast<char*>(program), nullptr};
    for (int i = 0; i < count; ++i) {
        pid_t child = 0;
        if (posix_spawn(&child, program, nullptr, nullptr, argv, environ) == 0) pids.push_back(child);
    }
    return pids;
}

void stopAll(const std::vector<pid_t>& pids) {
    for (pid_t pid : pids) kill(pid, SIGKILL);
    for (pid_t pid : pids) waitpid(pid, nullptr, 0);
}

void runningKelvoProcessIdentifiers(benchmark::State& state) {
    engine::Installer installer({"installer"});
    std::size_t found = 0;
    for (auto _ : state) {
        auto result = engine::InstallerTestAccess::runningKelvoProcessIdentifiers(installer);
        if (!result) {
            state.SkipWithError(result.error().localizedDescription().c_str());
            return;
        }
        found = result.value().size();
    }
    state.counters["copies_found"] = static_cast<double>(found);
}

// The two sources apart, to tell where the time goes.
void applicationScanAlone(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(platform::workspace().runningApplications());
}

void pgrepAlone(benchmark::State& state) {
    std::vector<std::string> arguments{"-x", "-u", std::to_string(geteuid()), "Kelvo"};
    for (auto _ : state) benchmark::DoNotOptimize(platform::childProcesses().run("/usr/bin/pgrep", arguments));
}

}  // namespace

BENCHMARK(runningKelvoProcessIdentifiers)->Unit(benchmark::kMillisecond)->Repetitions(15)->ReportAggregatesOnly(true);
BENCHMARK(applicationScanAlone)->Unit(benchmark::kMillisecond)->Repetitions(15)->ReportAggregatesOnly(true);
BENCHMARK(pgrepAlone)->Unit(benchmark::kMillisecond)->Repetitions(15)->ReportAggregatesOnly(true);

int main(int argc, char** argv) {
    // Fork before anything starts a thread.
    std::vector<pid_t> idle = startIdleProcesses(kOtherProcesses);
    std::vector<pid_t> kelvo = startKelvoCopies(kKelvoCopies);
    std::printf("Running with %zu other processes and %zu Kelvo copies.\n", idle.size(), kelvo.size());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    stopAll(kelvo);
    stopAll(idle);
    return 0;
}
