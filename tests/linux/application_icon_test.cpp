#include <gtest/gtest.h>

#include "platform/linux/ui/application_icon.h"
#include "platform/services.h"
#include "support/scripted_system.h"
#include "support/temp_folder.h"

namespace {

using namespace testing_support;

const std::string kInfoPlistNaming =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
    "<key>CFBundleIconFile</key><string>{}</string></dict></plist>\n";

std::string infoPlistNaming(const std::string& icon) {
    std::string text = kInfoPlistNaming;
    return text.replace(text.find("{}"), 2, icon);
}

TEST(ApplicationIcon, IsTheFileTheBundleNamesInItsResources) {
    struct Row {
        const char* name;
        std::optional<std::string> iconFileKey;  // none: no Info.plist
        std::string fileInResources;
        bool found;
    };
    const Row rows[] = {
        {"named without extension", "Installer", "Installer.png", true},
        {"named with extension", "Installer.png", "Installer.png", true},
        {"bare executable, conventional name", std::nullopt, "AppIcon.png", true},
        {"named file missing", "Installer", "AppIcon.png", false},
    };
    for (const Row& row : rows) {
        TempFolder folder;
        ScriptedSystem bundle;
        bundle.bundle = folder / "Install Kelvo.app";
        bundle.resources = bundle.bundle + "/Contents/Resources";
        if (row.iconFileKey) writeFile(bundle.bundle + "/Contents/Info.plist", infoPlistNaming(*row.iconFileKey));
        writeFile(*bundle.resources + "/" + row.fileInResources, "png");
        platform::ScopedServices scope({.mainBundle = &bundle});

        std::optional<std::string> path = platform::linux_backend::applicationIconPath();
        if (row.found) {
            EXPECT_EQ(path, *bundle.resources + "/" + row.fileInResources) << row.name;
        } else {
            EXPECT_EQ(path, std::nullopt) << row.name;
        }
    }
}

TEST(ApplicationIcon, IsNoneWithoutAResourcesFolder) {
    ScriptedSystem bundle;
    bundle.resources = std::nullopt;
    platform::ScopedServices scope({.mainBundle = &bundle});
    EXPECT_EQ(platform::linux_backend::applicationIconPath(), std::nullopt);
}

}  // namespace
