// One whole install with the real services, started once standard input has closed, so that a
// test can start several at the same moment. Prints how it ended and exits 0 when it succeeded.
#include <unistd.h>

#include <cstdio>

#include "engine/installer.h"

int main() {
    char ignored;
    while (read(0, &ignored, 1) > 0) {}
    auto result = engine::Installer().install();
    std::puts(result ? "installed" : result.error().localizedDescription().c_str());
    return result ? 0 : 1;
}
