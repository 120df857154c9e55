// Feeds arbitrary bytes to the do-shell-script reader, and arbitrary paths through the engine's
// privileged command and AppleScript escaping, which the reader must give back unchanged.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "engine/installer.h"
#include "platform/linux/apple_script_source.h"
#include "platform/services.h"
#include "support/installer_test_access.h"
#include "support/scripted_system.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    (void)platform::linux_backend::parseShellScriptSource(input);

    std::size_t split = input.find('\0');
    std::string source = input.substr(0, split);
    std::string destination = split == std::string::npos ? "/Applications/Kelvo.app" : input.substr(split + 1);
    testing_support::ScriptedSystem system;
    platform::ScopedServices scope(system.services());
    (void)engine::InstallerTestAccess::runPrivilegedInstall(engine::Installer({"x"}), source, destination,
                                                            platform::Error("failed"));
    auto parsed = platform::linux_backend::parseShellScriptSource(system.scriptSources.at(0));
    if (!parsed || parsed.value().command !=
                       engine::InstallerTestAccess::privilegedInstallCommand(source, destination, system.userId)) {
        std::abort();
    }
    return 0;
}
