#include "platform/linux/updates/install/StagedUpdate.h"

#include "platform/linux/updates/archive/UnpackedFolder.h"
#include "platform/linux/updates/install/SelfCheck.h"
#include "platform/linux/updates/install/TrialStart.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/UpdateArchive.h"
#include "tests/support/desktop/WaitUntil.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <thread>

namespace glimmerly {
namespace {

namespace fs = std::filesystem;

class StagedUpdateTest : public testing::Test {
protected:
    StagedUpdateTest() {
        fs::create_directories(folder);
        auto unpacked = UnpackedFolder::open(folder);
        EXPECT_TRUE(unpacked && readArchive(bytesOf(archiveOfVersion("1")), *unpacked));
    }
    /// The one version that all of the folder is of; else what was found.
    [[nodiscard]] std::string installedVersion() const {
        const auto program = contentOf(folder / "bin/glimmerly");
        const auto version = archiveVersionIn(folder).value_or("none");
        return program.ends_with(" # " + version) ? version : program + " and " + version;
    }

    ScratchDirectory scratch;
    fs::path folder = scratch.path() / "Glimmerly-1";
    InstalledFolder installed{folder / "bin/glimmerly"};
};

TEST_F(StagedUpdateTest, PutsTheNewVersionInPlaceAndKeepsTheOldUntilTheNextStart) {
    const std::string archive = archiveOfVersion("2");
    {
        auto staged = StagedUpdate::begin(installed, "1");
        ASSERT_TRUE(staged) << staged.error().description();
        EXPECT_FALSE(StagedUpdate::begin(installed, "1")) << "never two at once";
        auto arriving = ArrivingArchive::create(staged->slot());
        ASSERT_TRUE(arriving);
        for (const char& byte : archive)
            ASSERT_TRUE(arriving->add(std::as_bytes(std::span(&byte, 1))));
        const auto arrived = arriving->read();
        ASSERT_TRUE(arrived && staged->unpack(arrived->span()));
        EXPECT_EQ(staged->version(), "2");
        EXPECT_EQ(installedVersion(), "1");
        ASSERT_TRUE(staged->install());
        EXPECT_EQ(installedVersion(), "2");
        ASSERT_TRUE(staged->revert());
        EXPECT_EQ(installedVersion(), "1");
        ASSERT_TRUE(staged->install());
        EXPECT_EQ(modeOf(folder), 0755u);
    }
    installed.removeLeftovers("1");
    EXPECT_EQ(scratch.names().size(), 2u) << "the old version is kept until the new one has started";
    EXPECT_TRUE(installed.keepsOlderVersion());
    fs::remove(installed.otherVersion() / InstalledFolder::program);
    EXPECT_FALSE(installed.keepsOlderVersion()) << "not what starts";
    installed.removeLeftovers("2");
    EXPECT_EQ(scratch.names(), std::vector<std::string>{"Glimmerly-1"});
    EXPECT_EQ(installedVersion(), "2");
}

TEST_F(StagedUpdateTest, AKilledProcessLeavesOneWholeVersion) {
    // The parent looks at the folder while the child exchanges it as fast as it can, then kills it.
    for (int i = 0; i < 20; ++i) {
        const pid_t child = ::fork();
        if (child == 0) {
            auto staged = StagedUpdate::begin(installed, "1");
            bool isFine = staged && staged->unpack(bytesOf(archiveOfVersion("2")));
            while (isFine)
                isFine = staged->install() && staged->revert();
            ::_exit(1);
        }
        for (int look = 0; look < 50 * i; ++look)
            ASSERT_TRUE(fs::exists(folder / "bin/glimmerly"));
        ::kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the exchange failed";
        const std::string version = installedVersion();
        ASSERT_TRUE(version == "1" || version == "2") << version;
        installed.removeLeftovers(version);
        ASSERT_EQ(scratch.names(), std::vector<std::string>{"Glimmerly-1"});
        ASSERT_EQ(installedVersion(), version);
    }
}

TEST_F(StagedUpdateTest, KnowsWhatItMustNotReplace) {
    EXPECT_EQ(installed.replaceability(), Replaceability::replaceable);
    {
        auto staged = StagedUpdate::begin(installed, "1");
        ASSERT_TRUE(staged && staged->unpack(bytesOf(archiveOfVersion("2"))));
        writeContent(folder / "share/mine", "precious");
        EXPECT_EQ(installed.replaceability(), Replaceability::inSharedFolder) << "a file of the user's";
        EXPECT_FALSE(staged->install());
        EXPECT_EQ(contentOf(folder / "share/mine"), "precious");
    }
    fs::remove(folder / "share/mine");
    {
        auto staged = StagedUpdate::begin(installed, "1");
        ASSERT_TRUE(staged && staged->unpack(bytesOf(archiveOfVersion("2"))));
        writeContent(folder / InstalledFolder::contentsFile,
                     "2.1\nbin/glimmerly\nshare/glimmerly/archive-contents\n");
        EXPECT_FALSE(staged->install()) << "another process has updated it meanwhile, and further";
    }
    fs::remove(folder / InstalledFolder::contentsFile);
    EXPECT_EQ(installed.replaceability(), Replaceability::managedElsewhere);
    EXPECT_EQ(InstalledFolder::ofThisProcess().replaceability(), Replaceability::managedElsewhere);

    fs::create_directory_symlink("/", installed.slot());
    EXPECT_FALSE(StagedUpdate::begin(installed, "1")) << "the slot is a link";
    fs::remove(installed.slot());
    fs::create_directory(installed.slot());
    fs::permissions(installed.slot(), fs::perms::all);
    EXPECT_FALSE(StagedUpdate::begin(installed, "1")) << "the slot is open to others";
}

TEST_F(StagedUpdateTest, ANewVersionThatEndsBeforeItHasStartedGivesWayToTheOldOne) {
    const fs::path ran = scratch.path() / "ran";
    writeContent(folder / InstalledFolder::program, "#!/bin/sh\n>" + ran.string() + " # 1");
    for (const bool starts : {false, true}) {
        auto staged = std::optional(StagedUpdate::begin(installed, "1"));
        ASSERT_TRUE(*staged && (*staged)->unpack(bytesOf(archiveOfVersion("2"))) && (*staged)->install());
        const pid_t child = ::fork();
        if (child == 0) {
            staged.reset(); // no program inherits the lock
            TrialStart start(installed);
            start.begin();
            if (starts)
                start.end();
            ::_exit(1);
        }
        ASSERT_EQ(::waitpid(child, nullptr, 0), child);
        EXPECT_EQ(installedVersion(), "2") << "whoever installed it might take it back itself";
        staged.reset();
        EXPECT_TRUE(starts || waitUntil([&] { return fs::remove(ran); }));
        EXPECT_EQ(installedVersion(), starts ? "2" : "1");
        EXPECT_EQ(installed.removeLeftovers(installedVersion()).value_or("none"), starts ? "none" : "2");
        EXPECT_FALSE(installed.keepsOlderVersion());
        EXPECT_EQ(scratch.names(), std::vector<std::string>{"Glimmerly-1"});
    }
}

TEST(SelfCheck, BelievesOnlyAProgramThatEndsWellAndSoon) {
    const ScratchDirectory scratch;
    const fs::path program = scratch.path() / "program";
    const auto check = [&](const std::string& script, const std::stop_token& stop = {}) {
        writeContent(program, script);
        fs::permissions(program, fs::perms::owner_all);
        const auto outcome =
            runSelfCheck(program, stop, std::chrono::milliseconds(script.contains("sleep") ? 100 : 10'000));
        return outcome ? 0 : outcome.error().code();
    };
    EXPECT_EQ(check("#!/bin/sh\n[ $# = 1 ] && [ $1 = --self-check ]"), 0);
    for (const char* script :
         {"#!/bin/sh\nexit 1", "#!/bin/sh\nkill -SEGV $$", "#!/missing/loader\n", "\177ELF", ""})
        EXPECT_NE(check(script), 0) << script;
    EXPECT_EQ(check("#!/bin/sh\nexec sleep 60"), ETIMEDOUT);
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(check("#!/bin/sh\nread line </dev/zero", stop.get_token()), ECANCELED);
}

TEST(UpdateSlot, IsHeldByOneAtATimeAlsoWhileItIsTakenAway) {
    const ScratchDirectory scratch;
    std::atomic<int> holders = 0;
    const auto claimOften = [&] {
        for (int i = 0; i < 1000; ++i) {
            if (const auto slot = UpdateSlot::claim(scratch.path() / "slot")) {
                EXPECT_EQ(++holders, 1);
                EXPECT_TRUE(fs::exists(slot->path()));
                --holders;
            }
        }
    };
    std::jthread other(claimOften);
    claimOften();
}

} // namespace
} // namespace glimmerly
