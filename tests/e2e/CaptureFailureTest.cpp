// A capture that fails says so, is logged with its stage, leaves nothing behind, and breaks nothing.
#include "tests/e2e/support/Mounts.h"
#include "tests/e2e/support/Session.h"
#include "tests/support/ScratchDirectory.h"

#include <fmt/format.h>

namespace glimmerly::e2e {
namespace {

using std::filesystem::path;

/// Gives the calling process a file system of its own at `place`; nobody else sees it.
void mountOwn(const path& place, unsigned long flags, const char* options) {
    mountForThisProcessOnly();
    if (mount("tmpfs", place.c_str(), "tmpfs", flags, options) != 0)
        _exit(125);
}

/// The program with a file system of its own where capture files go.
struct SessionOnMount {
    SessionOnMount(unsigned long flags, const char* options)
        : program(desktop, {.beforeExec = [place = makePlace(), flags, options] {
                      mountOwn(place, flags, options);
                  }}) {}

    [[nodiscard]] path makePlace() const {
        const auto place = desktop.home() / "run/app.glimmerly.Glimmerly";
        std::filesystem::create_directory(place);
        std::filesystem::permissions(place, std::filesystem::perms::owner_all);
        return place;
    }
    /// The capture files that the program itself sees.
    [[nodiscard]] std::vector<path> captureFiles() {
        return program.captureFiles(fmt::format("/proc/{}/root", program.process().pid()));
    }

    Desktop desktop;
    Robot robot{desktop.client()};
    Glimmerly program;
};

void expectFailure(const Desktop& desktop, const Robot& robot, const Glimmerly& program,
                   std::string_view stage) {
    robot.pressHotkey();
    ASSERT_TRUE(program.waitForLog("ScreenCaptureKit capture failed before overlay"))
        << program.diagnostics();
    const auto aborted = program.log("Screenshot capture aborted");
    ASSERT_EQ(aborted.size(), 1U);
    const auto& metadata = aborted.front()["metadata"];
    EXPECT_EQ(metadata.value("stage", ""), stage);
    EXPECT_TRUE(metadata.contains("errorDomain") && metadata.contains("errorCode")) << metadata;
    EXPECT_FALSE(aborted.front().value("errorSummary", "").empty());

    const auto& client = desktop.client();
    ASSERT_TRUE(waitUntil([&] { return client.managedWindows().size() == 1; })) << "no alert";
    const auto alert = client.managedWindows().front();
    ASSERT_TRUE(waitUntil([&] { return client.focusedWindow() == alert; }));
    robot.type({Key::returnKey});
    EXPECT_TRUE(waitUntil([&] { return client.managedWindows().empty(); })) << "the alert stays";
}

TEST(CaptureFailure, DirectoryThatCannotBeWritten) {
    SessionOnMount session(MS_RDONLY, "mode=0700");
    expectFailure(session.desktop, session.robot, session.program, "Atomic_write_png");
    EXPECT_TRUE(session.captureFiles().empty());
}

TEST(CaptureFailure, DiskFull) {
    SessionOnMount session(0, "mode=0700,size=64k");
    expectFailure(session.desktop, session.robot, session.program, "Atomic_write_png");
    EXPECT_TRUE(session.captureFiles().empty());
}

TEST(CaptureFailure, AFileInTheDirectorysPlaceAndThenTheDirectoryAgain) {
    Session session;
    const auto place = session.program.temporaryDirectory();
    std::filesystem::remove_all(place);
    writeContent(place, "in the way");
    expectFailure(session.desktop, session.robot, session.program, "Atomic_write_png");
    EXPECT_EQ(contentOf(place), "in the way");

    std::filesystem::remove(place);
    const auto screen = session.desktop.client().pixels();
    EXPECT_TRUE(samePixels(session.copySelection({5, 5}, {50, 50}), screen.view({5, 5, 45, 45})));
}

TEST(CaptureFailure, ALinkInTheDirectorysPlaceIsNotFollowed) {
    Session session;
    const auto place = session.program.temporaryDirectory();
    const auto elsewhere = session.desktop.home() / "elsewhere";
    std::filesystem::create_directory(elsewhere);
    std::filesystem::permissions(elsewhere, std::filesystem::perms::owner_all);
    std::filesystem::remove_all(place);
    std::filesystem::create_directory_symlink(elsewhere, place);
    expectFailure(session.desktop, session.robot, session.program, "Atomic_write_png");
    EXPECT_TRUE(std::filesystem::is_empty(elsewhere));
}

TEST(CaptureFailure, TheDisplayHasGone) {
    Session session(Desktop::Options{.monitors = {{0, 0, 1280, 800}}});
    ASSERT_TRUE(session.desktop.outputOf({"xrandr", "--output", "DUMMY0", "--off"}));
    expectFailure(session.desktop, session.robot, session.program, "NSScreen_deviceDescription_screenNumber");
    EXPECT_TRUE(session.program.captureFiles().empty());

    ASSERT_TRUE(session.desktop.outputOf({"xrandr", "--output", "DUMMY0", "--mode", "1280x800-0"}));
    EXPECT_TRUE(session.openOverlay()) << "a display that came back is captured";
}

} // namespace
} // namespace glimmerly::e2e
