// Reaches the Installer's private operations from tests. The one definition for every test program.
#pragma once

#include "engine/installer.h"

namespace engine {

struct InstallerTestAccess {
    static auto runningKelvoProcessIdentifiers(const Installer& installer) {
        return installer.runningKelvoProcessIdentifiers();
    }
    static auto stopRunningInstances(const Installer& installer) { return installer.stopRunningInstances(); }
};

}  // namespace engine
