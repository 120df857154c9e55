#include <gtest/gtest.h>

#include "engine/install_error.h"
#include "engine/product_identity.h"

namespace {

using engine::InstallError;

TEST(InstallError, EveryCaseHasItsExactMessage) {
    const struct {
        const char* name;
        InstallError error;
        std::string message;
    } rows[] = {
        {"inspection", InstallError::processInspectionFailed("pgrep: bad"),
         "Could not check for running Kelvo processes.\npgrep: bad"},
        {"inspection, empty detail", InstallError::processInspectionFailed(""),
         "Could not check for running Kelvo processes.\n"},
        {"one process", InstallError::runningKelvoProcesses({812}),
         "Could not close the running Kelvo process (PID 812). Quit Kelvo and try again."},
        {"three processes", InstallError::runningKelvoProcesses({812, 907, 1290}),
         "Could not close the running Kelvo processes (PIDs 812, 907, 1290). Quit Kelvo and try again."},
        {"no process", InstallError::runningKelvoProcesses({}),
         "Could not close the running Kelvo processes (PIDs ). Quit Kelvo and try again."},
        {"kept in payload order with duplicates", InstallError::runningKelvoProcesses({907, 812, 907}),
         "Could not close the running Kelvo processes (PIDs 907, 812, 907). Quit Kelvo and try again."},
        {"negative and extreme values", InstallError::runningKelvoProcesses({-1, 2147483647, -2147483647 - 1}),
         "Could not close the running Kelvo processes (PIDs -1, 2147483647, -2147483648). Quit Kelvo and try again."},
        {"copy", InstallError::copyFailed("disk full"),
         "Could not copy Kelvo to the Applications folder.\ndisk full"},
        {"copy, empty detail", InstallError::copyFailed(""),
         "Could not copy Kelvo to the Applications folder.\n"},
        {"copy, detail with its own lines", InstallError::copyFailed("line one\nline two\n"),
         "Could not copy Kelvo to the Applications folder.\nline one\nline two\n"},
        {"launch", InstallError::launchFailed("The application could not be found."),
         "Kelvo was installed, but could not be launched automatically.\nThe application could not be found."
         "\nOpen Kelvo from your Applications folder to finish setup."},
        {"launch, empty detail", InstallError::launchFailed(""),
         "Kelvo was installed, but could not be launched automatically.\n\n"
         "Open Kelvo from your Applications folder to finish setup."},
        {"launch, detail with its own lines", InstallError::launchFailed("a\r\nb"),
         "Kelvo was installed, but could not be launched automatically.\na\r\nb"
         "\nOpen Kelvo from your Applications folder to finish setup."},
        {"embedded app missing", InstallError::embeddedAppMissing(),
         std::string("This installer is damaged: the embedded Kelvo app is missing. ") +
             "Please re-download the disk image from " + engine::kProductWebAddress + "."},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.error.errorDescription(), row.message) << row.name;
        EXPECT_EQ(row.error.localizedDescription(), row.message) << row.name;
        EXPECT_EQ(row.error.failureReason(), std::nullopt) << row.name;
        EXPECT_EQ(row.error.recoverySuggestion(), std::nullopt) << row.name;
        EXPECT_EQ(row.error.helpAnchor(), std::nullopt) << row.name;
    }
}

TEST(InstallError, ShowsThroughTheGenericRoleAlone) {
    // The application holds errors as the generic localized-error role and never looks at the case.
    InstallError original = InstallError::copyFailed("x");
    const platform::LocalizedError& generic = original;
    InstallError copy = original;
    EXPECT_EQ(generic.localizedDescription(), "Could not copy Kelvo to the Applications folder.\nx");
    EXPECT_EQ(copy.localizedDescription(), generic.localizedDescription());
}

}  // namespace
