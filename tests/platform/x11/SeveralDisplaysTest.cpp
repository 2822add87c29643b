#include "platform/qt/QtMainQueue.h"
#include "platform/x11/X11ScreenCapture.h"
#include "platform/x11/X11Screens.h"
#include "tests/platform/x11/X11Desktop.h"
#include "tests/support/desktop/DummyXorg.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

#include <cerrno>

namespace glimmerly {
namespace {

TEST(SeveralDisplays, AreCapturedAsTheyAreAtThatMoment) {
    DummyXorg xorg({{0, 0, 800, 600}, {800, 0, 640, 480}});
    const ScopedEnvironment display("DISPLAY", xorg.server().display().c_str());
    const ScopedEnvironment platform("QT_QPA_PLATFORM", "xcb");
    const ScopedEnvironment scales("QT_SCREEN_SCALE_FACTORS", "DUMMY0=2;DUMMY1=1.6");
    char name[] = "tests";
    char* arguments[] = {name, nullptr};
    int argumentCount = 1;
    const QGuiApplication application(argumentCount, arguments);
    QtMainQueue queue;
    const X11Screens screens(X11Connection::open().value());
    X11ScreenCapture capture(X11Connection::open().value(), screens, queue);
    const auto image = [&](std::uint32_t displayID) {
        std::optional<Result<Bitmap>> answer;
        capture.captureImage(capture.contentFilter({.displayID = displayID, .width = 0, .height = 0}), {},
                             [&](auto picture) { answer = std::move(picture); });
        EXPECT_TRUE(runUntil([&] { return answer.has_value(); }));
        return *answer;
    };

    const auto all = screens.screens();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].frame, (Rect{0, 0, 400, 300}));
    EXPECT_EQ(all[1].frame, (Rect{800, 0, 400, 300})) << "beyond where the first one ends in points";
    const auto second = all[1].displayID.value();
    xorg.arrange({{0, 0, 800, 600}, {800, 100, 1024, 768}});
    EXPECT_EQ(image(second)->size(), (PixelSize{1024, 768}));
    EXPECT_EQ(screens.screens().at(1).nativeFrame, (PixelRect{800, 100, 1024, 768}));

    xorg.arrange({{0, 0, 800, 600}});
    EXPECT_EQ(image(second).error().code(), ENODEV);
    EXPECT_TRUE(runUntil([&] { return screens.screens().size() == 1; }));

    xorg.arrange({{0, 0, 800, 600}, {800, 0, 640, 480}});
    EXPECT_TRUE(runUntil([&] { return screens.screens().size() == 2; }));
    EXPECT_EQ(screens.screens().at(1).displayID, second) << "the same output, the same number";
}

} // namespace
} // namespace glimmerly
