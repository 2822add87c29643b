// What a run tells the service, and that telling it never holds up the user.
#include "tests/e2e/support/ServedSession.h"

#include <QJsonArray>
#include <gmock/gmock.h>

#include <csignal>

namespace glimmerly::e2e {
namespace {

using testing::ElementsAre;

struct Telling : ServedSession {
    using ServedSession::ServedSession;

    void quit() {
        session.program.process().sendSignal(SIGTERM);
        EXPECT_EQ(session.program.process().waitForExit(patience), 0);
    }
    /// Each event that has arrived with the keys of its properties, as in "name(key,key)".
    [[nodiscard]] std::vector<std::string> events() const {
        std::vector<std::string> found;
        for (const auto& request : service.requests()) {
            for (const QJsonValue event : request["json"]["events"].toArray())
                found.push_back(event["name"].toString().toStdString() + "(" +
                                event["props"].toObject().keys().join(",").toStdString() + ")");
        }
        return found;
    }
};

TEST(Telemetry, ARunIsToldFromLaunchToTheLastCopy) {
    Telling run("right");
    ASSERT_TRUE(waitUntil([&] { return run.events().size() == 1; })) << "two seconds after the launch";
    ASSERT_TRUE(run.session.copySelection({10, 10}, {60, 40}));
    run.quit();
    EXPECT_THAT(run.events(),
                ElementsAre("app_launch()", "capture_requested(source)", "capture_started()",
                            "capture_succeeded(captured_height_px,captured_width_px,display_height_points,"
                            "display_width_points,duration_ms,expected_screen_height_px,"
                            "expected_screen_width_px,point_pixel_scale,requested_height_px,"
                            "requested_width_px)",
                            "overlay_opened()", "overlay_dismissed(overlay_active_ms,source)"));
    EXPECT_TRUE(run.session.program.log("Telemetry upload failed").empty());
}

TEST(Telemetry, AServiceThatNeverAnswersHoldsUpNothing) {
    Telling run("never");
    ASSERT_TRUE(waitUntil([&] { return run.service.requests().size() == 1; }));
    EXPECT_TRUE(run.session.copySelection({10, 10}, {60, 40}));
    run.quit();
    EXPECT_EQ(run.service.requests().size(), 2U) << "what was left is sent at the end";
    EXPECT_EQ(run.session.program.log().back().value("message", ""), "applicationWillTerminate");
}

} // namespace
} // namespace glimmerly::e2e
