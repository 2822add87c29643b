#include "capture/permission/ScreenRecordingPermission.h"

#include "tests/support/FakeMainQueue.h"
#include "tests/support/FakeScreenCapture.h"
#include "tests/support/FakeScreenRecordingAccess.h"
#include "tests/support/LogCapture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace glimmerly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr std::int32_t ownProcess = 77;
constexpr std::int32_t other = 88;

struct ScreenRecordingPermissionTest : testing::Test {
    void list(std::uint32_t number, WindowDescription description) {
        access.windows->push_back({number, statusItemWindowLayer});
        access.descriptions[number] = std::move(description);
    }
    GlimmerlyLog::Metadata probed() {
        const auto lines = log.withMessage("Probed menu bar window");
        return lines.empty() ? GlimmerlyLog::Metadata() : *lines.back().metadata;
    }

    LogCapture log;
    FakeMainQueue queue;
    FakeScreenCapture screenCapture{queue};
    FakeScreenRecordingAccess access;
    ScreenRecordingPermission permission{access, screenCapture, ownProcess};
};

TEST_F(ScreenRecordingPermissionTest, WithoutAnotherProgramsStatusItemTheDesktopDecides) {
    access.windows = {{5, 0}, {std::nullopt, 25}, {6, std::nullopt}, {7, 24}}; // none is a status item
    list(8, {8, ownProcess, "own", "glimmerly"});
    list(9, {9, std::nullopt, "no owner", {}});
    list(10, {std::nullopt, other, "no number", {}});
    access.windows->push_back({11, statusItemWindowLayer}); // gone by now
    for (const bool granted : {true, false}) {
        access.granted = granted;
        EXPECT_EQ(permission.isGranted(), granted);
        EXPECT_EQ(*log.records().back().metadata,
                  (GlimmerlyLog::Metadata{{"preflight", granted ? "true" : "false"},
                                          {"caller", log.records().back().metadata->at("caller")}}));
    }
    access.windows.reset(); // the list cannot be had
    EXPECT_FALSE(permission.isGranted());
    EXPECT_EQ(access.preflights, 3);
    const auto counted = log.withMessage("Checking menu bar status windows for title access");
    EXPECT_EQ(counted.front().metadata->at("windowCount"), "4");
    EXPECT_EQ(counted.back().metadata->at("windowCount"), "0");
    EXPECT_THAT(probed(), IsEmpty());
}

TEST_F(ScreenRecordingPermissionTest, TheFirstOtherStatusItemDecidesByItsTitle) {
    list(8, {8, ownProcess, "own", "glimmerly"});
    list(9, {9, other, {}, {}});
    list(10, {10, other, "readable", "clock"});
    EXPECT_FALSE(permission.isGranted()) << "whatever the desktop and later windows say";
    EXPECT_THAT(probed(), testing::IsSupersetOf({Pair("windowID", "9"), Pair("ownerPID", "88"),
                                                 Pair("ownerName", "nil"), Pair("title", "nil"),
                                                 Pair("granted", "false")}));
    access.descriptions[9] = {9, other, "", "clock"};
    EXPECT_TRUE(permission.isGranted()) << "an empty title is one";
    EXPECT_THAT(probed(), testing::IsSupersetOf(
                              {Pair("ownerName", "clock"), Pair("title", ""), Pair("granted", "true")}));
    EXPECT_EQ(access.preflights, 0);
    EXPECT_THAT(access.described, ElementsAre(8, 9, 8, 9));
}

TEST_F(ScreenRecordingPermissionTest, ARequestAsksTheDesktopAndOpensItsSettings) {
    screenCapture.displays = failure(Error("screens", 1, "none"));
    permission.requestAccess();
    EXPECT_EQ(queue.pending(), 1u);
    queue.runAll();
    EXPECT_EQ(access.settingsOpened, 1);
    EXPECT_EQ(log.records().back().message, "Requesting screen capture access via ScreenCaptureKit");
    EXPECT_EQ(log.records().back().category, "ScreenRecordingPermission");
}

} // namespace
} // namespace glimmerly
