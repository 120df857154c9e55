// The stand-in Kelvo that the demo and the end-to-end tests install: what it records about its
// start, and how it ejects the volume it is told to.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "support/command.h"
#include "support/launch_records.h"
#include "support/temp_folder.h"

namespace {

using testing_support::eventsNamed;
using testing_support::readLaunchEvents;
using testing_support::runCommand;
using testing_support::shellWord;
using testing_support::TempFolder;

const std::string kKelvo = KELVO_EXECUTABLE;

TEST(KelvoStandIn, RecordsWhereAndHowItWasStarted) {
    TempFolder folder;
    std::string record = folder / "launches.log";
    std::filesystem::create_directories(folder / "work dir");
    auto result = runCommand("cd " + shellWord(folder / "work dir") + " && KELVO_LAUNCH_RECORD=" + shellWord(record) +
                             " " + shellWord(kKelvo) + " --exit-now '' 'tab\there' 'back\\slash' 'two words'");
    ASSERT_EQ(result.exitStatus, 0);

    auto started = eventsNamed(readLaunchEvents(record), "started");
    ASSERT_EQ(started.size(), 1u) << testing_support::readFile(record);
    EXPECT_GT(started[0].pid(), 0);
    EXPECT_EQ(started[0].value("executable"), std::filesystem::canonical(kKelvo).string());
    EXPECT_EQ(started[0].value("cwd"), folder / "work dir");
    EXPECT_EQ(started[0].value("argc"), "5");
    EXPECT_EQ(started[0].arguments(),
              (std::vector<std::string>{"--exit-now", "", "tab\there", "back\\slash", "two words"}));
}

TEST(KelvoStandIn, ReportsAVolumeItCannotEjectAndKeepsRunningUntilAskedToQuit) {
    TempFolder folder;
    std::string record = folder / "launches.log";
    std::filesystem::create_directories(folder / "not a mount point");
    // Started, given time to try, then asked to quit with SIGTERM; the shell reaps it.
    auto result = runCommand("KELVO_LAUNCH_RECORD=" + shellWord(record) + " " + shellWord(kKelvo) +
                             " --eject-installer-volume " + shellWord(folder / "not a mount point") +
                             " & kelvo=$!; sleep 0.5; kill -0 $kelvo && echo running; kill $kelvo; wait $kelvo");
    EXPECT_EQ(result.output, "running\n");

    auto events = readLaunchEvents(record);
    auto ejects = eventsNamed(events, "eject");
    ASSERT_EQ(ejects.size(), 1u) << testing_support::readFile(record);
    EXPECT_EQ(ejects[0].value("volume"), folder / "not a mount point");
    EXPECT_TRUE(ejects[0].value("outcome").value_or("").starts_with("not ejected: ")) << *ejects[0].value("outcome");
    ASSERT_EQ(eventsNamed(events, "quit").size(), 1u);
    EXPECT_EQ(eventsNamed(events, "quit")[0].value("signal"), "15");
}

TEST(KelvoStandIn, EjectsABusyVolumeOnceItIsLetGo) {
    if (geteuid() != 0) GTEST_SKIP() << "mounting a disk image needs root";
    if (access("/dev/loop-control", F_OK) != 0) GTEST_SKIP() << "no loop devices on this machine";
    if (runCommand("command -v mksquashfs unshare >/dev/null").exitStatus != 0) {
        GTEST_SKIP() << "mksquashfs or unshare is missing";
    }
    TempFolder folder;
    testing_support::writeFile(folder / "payload/file", "contents");
    ASSERT_EQ(runCommand("mksquashfs " + shellWord(folder / "payload") + " " + shellWord(folder / "image") +
                         " -quiet -noappend >/dev/null")
                  .exitStatus,
              0);
    std::string record = folder / "launches.log";
    std::string volume = folder / "Install Kelvo";
    // In a mount namespace of its own: a process holds the volume busy for a second while Kelvo
    // is told to eject it; the mount must survive the busy second and be gone afterwards.
    std::string script = R"(
        mkdir -p "$VOLUME" && mount -o loop,ro "$IMAGE" "$VOLUME" || exit 9
        (cd "$VOLUME" && exec sleep 1) & holder=$!
        sleep 0.2
        "$KELVO" --eject-installer-volume "$VOLUME" & kelvo=$!
        sleep 0.3
        mountpoint -q "$VOLUME" && echo mounted-while-busy
        wait $holder
        for i in $(seq 100); do grep -q 'event=eject' "$KELVO_LAUNCH_RECORD" && break; sleep 0.1; done
        mountpoint -q "$VOLUME" || echo gone-afterwards
        kill $kelvo; wait $kelvo
    )";
    auto result = runCommand("VOLUME=" + shellWord(volume) + " IMAGE=" + shellWord(folder / "image") +
                             " KELVO=" + shellWord(kKelvo) + " KELVO_LAUNCH_RECORD=" + shellWord(record) +
                             " unshare -m --propagation private sh -c " + shellWord(script));
    EXPECT_EQ(result.output, "mounted-while-busy\ngone-afterwards\n");
    auto ejects = eventsNamed(readLaunchEvents(record), "eject");
    ASSERT_EQ(ejects.size(), 1u) << testing_support::readFile(record);
    EXPECT_EQ(ejects[0].value("volume"), volume);
    EXPECT_EQ(ejects[0].value("outcome"), "ejected");
}

}  // namespace
