#include "support/other_user.h"

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

namespace testing_support {

std::string asOrdinaryUser(uid_t user, const std::function<std::string()>& work,
                           const std::function<void(pid_t)>& beforeWork) {
    int report[2], go[2];
    if (pipe(report) != 0 || pipe(go) != 0) return "no pipe";
    pid_t child = fork();
    if (child == 0) {
        char start;
        bool ordinary = setsid() > 0 && setgroups(0, nullptr) == 0 && setresgid(user, user, user) == 0 &&
                        setresuid(user, user, user) == 0 && read(go[0], &start, 1) == 1;
        std::string text = ordinary ? work() : "no ordinary user";
        _exit(write(report[1], text.data(), text.size()) < 0);
    }
    close(report[1]);
    close(go[0]);
    if (beforeWork) beforeWork(child);
    (void)!write(go[1], "g", 1);
    close(go[1]);
    std::string text;
    char buffer[512];
    for (ssize_t count; (count = read(report[0], buffer, sizeof buffer)) > 0;) text.append(buffer, count);
    close(report[0]);
    waitpid(child, nullptr, 0);
    return text;
}

}  // namespace testing_support
