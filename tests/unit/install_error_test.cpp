#include <gtest/gtest.h>

#include "engine/install_error.h"
#include "engine/product_identity.h"

namespace {

using engine::InstallError;

// The messages that no other test spells out whole.
TEST(InstallError, EveryCaseHasItsExactMessage) {
    const std::string launchLead = "Kelvo was installed, but could not be launched automatically.\n";
    const std::string launchTail = "\nOpen Kelvo from your Applications folder to finish setup.";
    const struct {
        InstallError error;
        std::string message;
    } rows[] = {
        {InstallError::runningKelvoProcesses({907, -1, 907}),
         "Could not close the running Kelvo processes (PIDs 907, -1, 907). Quit Kelvo and try again."},
        {InstallError::runningKelvoProcesses({}),
         "Could not close the running Kelvo processes (PIDs ). Quit Kelvo and try again."},
        {InstallError::launchFailed("Not found."), launchLead + "Not found." + launchTail},
        {InstallError::launchFailed(""), launchLead + launchTail},
        {InstallError::embeddedAppMissing(),
         std::string("This installer is damaged: the embedded Kelvo app is missing. Please re-download the disk "
                     "image from ") + engine::kProductWebAddress + "."},
    };
    for (const auto& row : rows) EXPECT_EQ(row.error.localizedDescription(), row.message);
}

}  // namespace
