// The program as it is packaged updates itself from a server on loopback, or stays what it was.
#include "tests/e2e/support/Installation.h"
#include "tests/support/UpdateArchive.h"

#include <csignal>

namespace glimmerly::e2e {
namespace {

using namespace std::chrono_literals;
using std::filesystem::path;

constexpr auto found = "Sparkle did not surface a downloadable update";
constexpr auto failed = "An error occurred while installing the update";
constexpr auto offered = "Glimmerly 2.0 is available";
constexpr auto downloading = "Downloading Glimmerly 2.0…";
constexpr auto ready = "Glimmerly 2.0 is ready to install";
constexpr auto didNotWork = "The update did not work";
constexpr auto checkDidNotWork = "The check for updates did not work";
constexpr auto upToDate = "You’re up to date!";

TEST(Updating, ThePackagedProgramComesBackAsTheNewerVersionWithItsPreferences) {
    Installation installation;
    installation.serve("file/feed.xml", installation.feed("file"));
    const auto program = installation.start();
    ASSERT_TRUE(installation.check());
    for (const char* dialog : {offered, ready})
        ASSERT_TRUE(installation.accept(dialog));
    EXPECT_EQ(program->process().waitForExit(patience), 0);
    ASSERT_TRUE(program->waitForLog("applicationDidFinishLaunching", 2)) << program->diagnostics();
    EXPECT_EQ(installation.version(), "2.0");
    EXPECT_TRUE(waitUntil([&] { return installation.isAlone(); })) << "the old version has gone by then";
    const auto preferences = contentOf(program->preferencesFile());
    for (const char* kept : {"mine=kept", "SUAutomaticallyChecksForUpdates=false", "SULastCheckTime="})
        EXPECT_NE(preferences.find(kept), std::string::npos) << preferences;
    EXPECT_TRUE(program->log(failed).empty());

    ASSERT_TRUE(waitUntil([&] { return program->isHotkeyHeld(); }));
    ASSERT_TRUE(installation.check());
    ASSERT_TRUE(installation.accept(upToDate)) << "the one that runs now is the newest";
    EXPECT_TRUE(program->waitForLog(found));
}

TEST(Updating, QuitAndReopenComesBackAsTheVersionThatWasDownloadedInTheBackground) {
    Installation installation;
    installation.serve("file/feed.xml", installation.feed("file"));
    installation.setPreferences(
        "SUAutomaticallyChecksForUpdates=true\nSUAutomaticallyDownloadsUpdates=true\n");
    const auto program = installation.startWithoutPermission();
    ASSERT_TRUE(waitUntil([&] { return installation.isShown(ready); }));
    EXPECT_EQ(installation.version(), "1.0");
    EXPECT_EQ(installation.dialog(), "Permissions") << "which keeps the keyboard";
    installation.robot().type({Key::escape});
    EXPECT_EQ(program->process().waitForExit(patience), 0);
    ASSERT_TRUE(program->waitForLog("applicationDidFinishLaunching", 2)) << program->diagnostics();
    EXPECT_EQ(installation.version(), "2.0");
    EXPECT_TRUE(waitUntil([&] { return installation.isAlone(); }));
    EXPECT_EQ(installation.programs().size(), 1U);
    EXPECT_TRUE(program->log(failed).empty());
}

TEST(Updating, WhateverTheServerSendsTheOldVersionGoesOnAndSaysWhy) {
    Installation installation;
    const std::string archive = contentOf(installation.archive());
    std::string flipped = archive;
    flipped[archive.size() / 2] = static_cast<char>(flipped[archive.size() / 2] ^ 1);
    const std::string climbing = archiveOf({{.path = "Glimmerly/../../evil", .content = "evil"}});
    const std::string broken = archiveOfVersion("2.0", "exit 127 # as where a library is missing");
    const std::string bomb =
        R"(<!DOCTYPE r [<!ENTITY a "aaaaaaaaaa"><!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;">]>)";
    const struct {
        const char* name;
        std::string feed;
        std::string archive;
        const char* title;
        int code;
    } cases[] = {
        {"a cut connection", installation.feed("cut"), archive, didNotWork, 2001},
        {"a truncated archive", installation.feed("file"), archive.substr(0, archive.size() / 2), didNotWork,
         3001},
        {"one flipped bit", installation.feed("file"), flipped, didNotWork, 3001},
        {"another key's signature", installation.feed("file", Installation::Signer::somebodyElse), archive,
         didNotWork, 3001},
        {"a path out of the folder", installation.feedFor(climbing), climbing, didNotWork, 3000},
        {"a program that does not load", installation.feedFor(broken), broken, didNotWork, 3003},
        {"an older version", installation.feed("file", Installation::Signer::us, "0.9"), archive, upToDate,
         1001},
        {"entities in entities", bomb + installation.feed("file"), archive, checkDidNotWork, 1000},
        {"a page", "<!DOCTYPE html><html><body>Welcome</body></html>", archive, checkDidNotWork, 1000},
    };
    const auto program = installation.start();
    for (const auto& [name, feed, served, title, code] : cases) {
        SCOPED_TRACE(name);
        installation.serve("file/feed.xml", feed);
        writeContent(installation.archive(), served);
        const char* message = code == 1001 ? found : failed;
        const auto lines = program->log(message).size();
        ASSERT_TRUE(installation.check());
        if (code >= 2000) {
            ASSERT_TRUE(installation.accept(offered));
        }
        ASSERT_TRUE(installation.accept(title));
        ASSERT_TRUE(waitUntil([&] { return !installation.dialog(); }));
        ASSERT_TRUE(program->waitForLog(message, lines + 1));
        const auto log = program->log(message);
        EXPECT_EQ(log.size(), lines + 1);
        EXPECT_NE(log.back()["metadata"]["details"].get<std::string>().find(std::to_string(code)),
                  std::string::npos)
            << log.back();
        EXPECT_EQ(installation.version(), "1.0");
        EXPECT_TRUE(installation.isAlone());
        EXPECT_TRUE(program->process().isRunning());
    }
    EXPECT_FALSE(std::filesystem::exists(installation.folder().parent_path().parent_path() / "evil"));
}

TEST(Updating, ANewVersionThatDoesNotStartGivesWayToTheOldOneWhichSaysSo) {
    Installation installation;
    installation.serve("file/feed.xml", installation.feed("file"));
    enum class Install { now, atQuit };
    const struct {
        const char* endOfNewVersion;
        Install when;
        const char* version; ///< that runs in the end
    } cases[] = {
        {"loading", Install::now, "1.0"},
        {"starting", Install::now, "1.0"},
        {"starting", Install::atQuit, "1.0"},
        {"", Install::atQuit, "2.0"},
    };
    for (const auto& [endOfNewVersion, when, version] : cases) {
        SCOPED_TRACE(std::string(endOfNewVersion) + (when == Install::now ? " now" : " at quit"));
        installation.install();
        auto program = installation.start(endOfNewVersion);
        const auto lines = program->log(failed).size();
        ASSERT_TRUE(installation.check());
        ASSERT_TRUE(installation.accept(offered));
        if (when == Install::now) {
            ASSERT_TRUE(installation.accept(ready));
        } else {
            ASSERT_TRUE(installation.waitFor(ready));
            program->process().sendSignal(SIGTERM);
            ASSERT_EQ(program->process().waitForExit(patience), 0);
            ASSERT_EQ(installation.version(), "2.0");
            program = installation.start(endOfNewVersion); // which waits until one of them has started
        }
        if (std::string_view(version) == "1.0") {
            ASSERT_TRUE(waitUntil([&] { return installation.isShown(didNotWork); }));
            ASSERT_TRUE(program->waitForLog(failed, lines + 1));
            EXPECT_EQ(program->log(failed).back()["metadata"]["errorCode"], "4006");
        }
        EXPECT_TRUE(waitUntil([&] { return installation.isAlone(); }));
        EXPECT_EQ(installation.version(), version);
        EXPECT_EQ(installation.programs().size(), 1U);
        EXPECT_TRUE(program->isHotkeyHeld());
        installation.killPrograms();
    }
}

TEST(Updating, AFullDiskLeavesTheOldVersion) {
    Installation installation;
    installation.serve("file/feed.xml", installation.feed("file"));
    const auto program = installation.startOnFullDisk();
    ASSERT_TRUE(installation.check());
    ASSERT_TRUE(installation.accept(offered));
    ASSERT_TRUE(installation.accept(didNotWork));
    ASSERT_TRUE(program->waitForLog(failed));
    EXPECT_NE(program->log(failed)[0]["metadata"]["details"].get<std::string>().find("No space left"),
              std::string::npos)
        << program->log(failed)[0];
    const path root = "/proc/" + std::to_string(program->process().pid()) + "/root";
    EXPECT_EQ(namesIn(root / installation.folder().parent_path().relative_path()),
              std::vector<std::string>{"Glimmerly"});
}

TEST(Updating, KilledAtAnyMomentItStartsAgainAsOneWholeVersion) {
    Installation installation;
    const auto untilReady = [&] {
        EXPECT_TRUE(installation.accept(offered));
        EXPECT_TRUE(installation.waitFor(ready));
    };
    const struct {
        const char* name;
        std::string feedBehaviour;
        std::string archiveBehaviour;
        std::function<void()> until;
    } steps[] = {
        {"checking", "hang", "file", [&] { EXPECT_TRUE(installation.waitFor("Checking for updates…")); }},
        {"offering", "file", "file", [&] { EXPECT_TRUE(installation.waitFor(offered)); }},
        {"downloading", "file", "hang",
         [&] {
             EXPECT_TRUE(installation.accept(offered));
             EXPECT_TRUE(installation.waitFor(downloading));
             EXPECT_TRUE(waitUntil([&] { return !installation.isAlone(); }));
         }},
        {"ready", "file", "file", untilReady},
        {"exchanged", "file", "file",
         [&] {
             untilReady();
             installation.robot().type({Key::returnKey});
             EXPECT_TRUE(waitUntil([&] { return installation.version() == "2.0"; }));
         }},
        {"starting", "file", "file",
         [&] {
             untilReady();
             installation.robot().type({Key::returnKey});
             EXPECT_TRUE(waitUntil([&] { return installation.programs().size() == 2; }));
         }},
    };
    for (const auto& [name, feedBehaviour, archiveBehaviour, until] : steps) {
        SCOPED_TRACE(name);
        installation.serve(feedBehaviour + "/feed.xml", installation.feed(archiveBehaviour));
        {
            const auto program = installation.start();
            ASSERT_TRUE(installation.check());
            until();
            installation.killPrograms();
        }
        const auto version = installation.version();
        ASSERT_TRUE(version == "1.0" || version == "2.0") << version;
        {
            const auto program = installation.start(); // which waits until it has launched
            EXPECT_TRUE(waitUntil([&] { return installation.isAlone(); }));
            EXPECT_EQ(installation.version(), version);
            installation.killPrograms();
        }
        installation.install();
    }
}

} // namespace
} // namespace glimmerly::e2e
