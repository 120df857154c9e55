// A real child process started by a test and reaped the moment it exits, the way a program's own
// parent would reap it: so a copy of Kelvo that quits does not linger as a zombie that pgrep and
// kill(pid, 0) still see.
//
// The destructor kills the process if it still runs and always reaps it.
#pragma once

#include <sys/types.h>

#include <atomic>
#include <chrono>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace testing_support {

class StartedProcess {
public:
    // Starts `program` with `arguments` (after the program itself), standard output and error
    // on /dev/null. `pid()` is 0 when it could not be started.
    StartedProcess(const std::string& program, const std::vector<std::string>& arguments);
    ~StartedProcess();
    StartedProcess(const StartedProcess&) = delete;
    StartedProcess& operator=(const StartedProcess&) = delete;

    pid_t pid() const { return pid_; }
    // Its raw wait status once it has exited and been reaped, waiting up to `timeout`; none while
    // it runs.
    std::optional<int> waitForExit(std::chrono::duration<double> timeout) const;

private:
    pid_t pid_ = 0;
    std::atomic<bool> exited_{false};
    std::atomic<int> status_{0};
    std::thread reaper_;
};

// The path of the stand-in Kelvo's executable inside the built Kelvo.app.
std::string standInKelvoExecutable();

}  // namespace testing_support
