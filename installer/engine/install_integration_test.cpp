// Two whole installs into one place, started together on the real machine, take turns: each leaves
// a complete bundle.
#include <gtest/gtest.h>

#include <future>

#include "engine/installer.h"
#include "support/isolation.h"
#include "support/payload_bundle.h"
#include "support/sample_trees.h"

namespace {

using namespace testing_support;

TEST(ConcurrentInstalls, TwoInstallsIntoOnePlaceEachLeaveACompleteBundle) {
    if (auto why = ownProcessNamespaceMissing()) GTEST_SKIP() << *why;
    PayloadBundle bundle;
    makeSampleBundle(bundle.payload(), 4096);
    for (int file = 0; file < 2000; ++file) writeFile(bundle.payload() + "/Contents/Parts/" + std::to_string(file), "");
    std::string expected = snapshotTree(bundle.payload());
    TempFolder destination;
    engine::Installer installer({"installer", "--dest", destination.path()});
    ASSERT_TRUE(installer.install()) << "the copy that each round replaces";
    for (int round = 0; round < 10; ++round) {
        auto install = [&] {
            auto result = installer.install();
            return result ? "" : result.error().localizedDescription();
        };
        auto first = std::async(std::launch::async, install), second = std::async(std::launch::async, install);
        EXPECT_EQ(first.get() + second.get(), "") << "round " << round;
        ASSERT_EQ(expected, snapshotTree(destination / "Kelvo.app")) << "round " << round;
    }
}

}  // namespace
