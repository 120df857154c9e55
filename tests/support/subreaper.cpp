// subreaper COMMAND [ARGS...]: runs COMMAND, reaping every orphan that is re-parented to it, and
// exits with COMMAND's status as soon as COMMAND has ended. As the first process of a process
// namespace, its exit ends whatever the command left running there.
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: subreaper COMMAND [ARGS...]\n");
        return 2;
    }
    if (prctl(PR_SET_CHILD_SUBREAPER, 1) != 0) std::perror("subreaper: prctl");
    pid_t command = fork();
    if (command < 0) {
        std::perror("subreaper: fork");
        return 2;
    }
    if (command == 0) {
        execvp(argv[1], argv + 1);
        std::perror("subreaper: exec");
        _exit(127);
    }
    for (;;) {
        int status = 0;
        pid_t reaped = wait(&status);
        if (reaped < 0 && errno == EINTR) continue;
        if (reaped < 0) return 1;
        if (reaped == command) return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
}
