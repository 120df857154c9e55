// Reaches the Installer's private operations from tests. The one definition for every test program.
#pragma once

#include "engine/installer.h"

namespace engine {

struct InstallerTestAccess {
    static auto runningKelvoProcessIdentifiers(const Installer& installer) {
        return installer.runningKelvoProcessIdentifiers();
    }
    static auto stopRunningInstances(const Installer& installer) { return installer.stopRunningInstances(); }
    static auto runPrivilegedInstall(const Installer& installer, const std::string& source,
                                     const std::string& destination, const platform::Error& plainCopyError) {
        return installer.runPrivilegedInstall(source, destination, plainCopyError);
    }
};

}  // namespace engine
