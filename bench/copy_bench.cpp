// copy_bench generate FOLDER        makes the benchmark bundle FOLDER/Kelvo.app
// copy_bench copy SOURCE DEST       the installer's plain copy, in this process
// copy_bench measure PROGRAM ARGS   runs PROGRAM and prints "<seconds> <peak memory in KiB>"
//
// bench/copy_bench.sh puts these together; see there.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstring>

#include "bench_tree.h"
#include "platform/linux/file_manager/file_tree.h"

namespace {

int generate(const char* folder) {
    bench::TreeTotals totals = bench::makeBenchmarkBundle(folder);
    std::printf("%llu files, %.1f MB\n", static_cast<unsigned long long>(totals.files), totals.bytes / 1e6);
    return 0;
}

int copy(const char* source, const char* destination) {
    if (auto copied = platform::linux_backend::copyTree(source, destination); !copied) {
        std::fprintf(stderr, "copy_bench: %s\n", copied.error().localizedDescription().c_str());
        return 1;
    }
    return 0;
}

// Peak memory is the child's own high-water mark (wait4), whatever the child is.
int measure(char** command) {
    auto start = std::chrono::steady_clock::now();
    pid_t child = fork();
    if (child < 0) return 1;
    if (child == 0) {
        execvp(command[0], command);
        std::perror("copy_bench: exec");
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("%.3f %ld\n", seconds, usage.ru_maxrss);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 3 && std::strcmp(argv[1], "generate") == 0) return generate(argv[2]);
    if (argc == 4 && std::strcmp(argv[1], "copy") == 0) return copy(argv[2], argv[3]);
    if (argc >= 3 && std::strcmp(argv[1], "measure") == 0) return measure(argv + 2);
    std::fprintf(stderr, "usage: copy_bench generate FOLDER | copy SOURCE DEST | measure PROGRAM [ARGS...]\n");
    return 64;
}
