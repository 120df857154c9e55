// A stand-in for Kelvo: a real app bundle's executable that runs until it is asked to quit.
//
//   Kelvo [--ignore-sigterm]
//
// SIGTERM, SIGINT and SIGHUP end it, unless --ignore-sigterm is given, in which case SIGTERM is
// ignored and only SIGKILL (or SIGINT/SIGHUP) ends it: the copy that the installer has to force.
#include <signal.h>

#include <cstring>

int main(int argc, char** argv) {
    bool ignoreTerminate = false;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--ignore-sigterm") == 0) ignoreTerminate = true;
    }
    sigset_t quitSignals;
    sigemptyset(&quitSignals);
    sigaddset(&quitSignals, SIGINT);
    sigaddset(&quitSignals, SIGHUP);
    if (ignoreTerminate) {
        signal(SIGTERM, SIG_IGN);
    } else {
        sigaddset(&quitSignals, SIGTERM);
    }
    sigprocmask(SIG_BLOCK, &quitSignals, nullptr);
    int received = 0;
    sigwait(&quitSignals, &received);
    return 0;
}
