// Prints the main bundle's path, its resources folder ("none" when absent) and each argument,
// one per line, as the real services report them.
#include <cstdio>

#include "platform/services.h"

int main() {
    std::printf("bundle=%s\n", platform::mainBundle().bundlePath().c_str());
    auto resources = platform::mainBundle().resourceURL();
    std::printf("resources=%s\n", resources ? resources->path().c_str() : "none");
    for (const std::string& argument : platform::processInfo().arguments()) {
        std::printf("argument=%s\n", argument.c_str());
    }
    return 0;
}
