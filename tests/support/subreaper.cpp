// subreaper COMMAND [ARGS...]: runs COMMAND, reaping every orphan that is re-parented to it, and
// exits with COMMAND's status.
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
    int exitCode = 1;
    for (;;) {
        int status = 0;
        pid_t reaped = wait(&status);
        if (reaped < 0) {
            if (errno == EINTR) continue;
            break;
        }
        if (reaped == command) {
            exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        }
    }
    return exitCode;
}
