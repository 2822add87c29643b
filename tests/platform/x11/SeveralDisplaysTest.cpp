#include "platform/qt/QtMainQueue.h"
#include "platform/x11/X11ScreenCapture.h"
#include "platform/x11/X11Screens.h"
#include "tests/platform/x11/DummyXorg.h"
#include "tests/platform/x11/X11Desktop.h"
#include "tests/platform/x11/XcbClient.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

#include <cerrno>

namespace glimmerly {
namespace {

struct Arrangement {
    const char* name;
    std::vector<PixelRect> displays;
    const char* scales;
    std::vector<Rect> frames; ///< expected; the first display's bottom is at 0
};

/// This process as a Qt program on several displays.
class SeveralDisplays {
public:
    explicit SeveralDisplays(const Arrangement& arrangement)
        : server(arrangement.displays), scales_("QT_SCREEN_SCALE_FACTORS", arrangement.scales) {}

    DummyXorg server;

private:
    ScopedEnvironment display_{"DISPLAY", server.display().c_str()};
    ScopedEnvironment platform_{"QT_QPA_PLATFORM", "xcb"};
    ScopedEnvironment scales_;
    char name_[6] = "tests";
    char* arguments_[2] = {name_, nullptr};
    int argumentCount_ = 1;
    QGuiApplication application_{argumentCount_, arguments_};

public:
    QtMainQueue queue;
    X11Screens screens{X11Connection::open().value()};
    X11ScreenCapture capture{X11Connection::open().value(), screens, queue};
    XcbClient client;

    Result<Bitmap> image(std::uint32_t displayID) {
        std::optional<Result<Bitmap>> answer;
        capture.captureImage(capture.contentFilter({.displayID = displayID, .width = 0, .height = 0}), {},
                             [&](auto picture) { answer = std::move(picture); });
        EXPECT_TRUE(waitUntil([&] { return answer.has_value(); }));
        return *answer;
    }
};

class Arranged : public testing::TestWithParam<Arrangement> {};

TEST_P(Arranged, FramesPointerAndPixelsAreEachDisplaysOwn) {
    SeveralDisplays desktop(GetParam());
    const auto all = desktop.screens.screens();
    ASSERT_EQ(all.size(), 2U);
    for (std::size_t i = 0; i < all.size(); ++i) {
        const PixelRect area = GetParam().displays[i];
        EXPECT_EQ(all[i].nativeFrame, area);
        EXPECT_EQ(all[i].frame, GetParam().frames[i]) << all[i].frame.x << ", " << all[i].frame.y;
        const PixelRect window{area.x + 10, area.y + 20, area.width - 30, area.height - 40};
        desktop.client.open({.area = window,
                             .colour = 0x102030 * static_cast<std::uint32_t>(i + 1),
                             .overrideRedirect = true});
    }
    for (std::size_t i = 0; i < all.size(); ++i) {
        const PixelRect area = GetParam().displays[i];
        for (const int x : {area.x, area.x + area.width - 1}) {
            for (const int y : {area.y, area.y + area.height - 1}) {
                desktop.client.movePointer(x, y);
                const Point mouse = desktop.screens.mouseLocation();
                EXPECT_TRUE(all[i].frame.contains(mouse)) << x << ", " << y;
                EXPECT_FALSE(all[1 - i].frame.contains(mouse)) << x << ", " << y;
            }
        }
        Bitmap expected = desktop.client.pixels(area);
        for (int y = 0; y < area.height; ++y)
            std::ranges::for_each(expected.row(y), [](Bitmap::Pixel& pixel) { pixel |= 0xff000000; });
        EXPECT_EQ(desktop.image(all[i].displayID.value()).value(), expected);
    }
}

INSTANTIATE_TEST_SUITE_P(Arrangements, Arranged,
                         testing::Values(Arrangement{"SideBySide",
                                                     {{0, 0, 1000, 700}, {1000, 50, 900, 750}},
                                                     "DUMMY0=2;DUMMY1=1.5",
                                                     {{0, 0, 500, 350}, {1000, -200, 600, 500}}},
                                         Arrangement{"OtherOnTheLeft",
                                                     {{900, 0, 1000, 700}, {0, 0, 900, 600}},
                                                     "DUMMY0=1;DUMMY1=1.25",
                                                     {{900, 0, 1000, 700}, {0, 220, 720, 480}}},
                                         Arrangement{"OtherAbove",
                                                     {{0, 700, 1001, 701}, {100, 0, 1000, 700}},
                                                     "DUMMY0=1;DUMMY1=1.6",
                                                     {{0, 0, 1001, 701}, {100, 963.5, 625, 437.5}}},
                                         Arrangement{"OtherBelow",
                                                     {{0, 0, 1000, 700}, {0, 700, 1001, 701}},
                                                     "DUMMY0=1;DUMMY1=2",
                                                     {{0, 0, 1000, 700}, {0, -350.5, 500.5, 350.5}}}),
                         [](const auto& arrangement) { return arrangement.param.name; });

TEST(SeveralDisplays, AreCapturedAsTheyAreAtThatMoment) {
    SeveralDisplays desktop({"", {{0, 0, 800, 600}, {800, 0, 640, 480}}, "", {}});
    const auto all = desktop.screens.screens();
    ASSERT_EQ(all.size(), 2U);
    const auto second = all[1].displayID.value();
    desktop.server.arrange({{0, 0, 800, 600}, {800, 100, 1024, 768}});
    EXPECT_EQ(desktop.image(second)->size(), (PixelSize{1024, 768}));
    EXPECT_EQ(desktop.screens.screens().at(1).nativeFrame, (PixelRect{800, 100, 1024, 768}));

    desktop.server.arrange({{0, 0, 800, 600}});
    EXPECT_EQ(desktop.image(second).error().code(), ENODEV);
    EXPECT_TRUE(waitUntil([&] { return desktop.screens.screens().size() == 1; }));

    desktop.server.arrange({{0, 0, 800, 600}, {800, 0, 640, 480}});
    EXPECT_TRUE(waitUntil([&] { return desktop.screens.screens().size() == 2; }));
    EXPECT_EQ(desktop.screens.screens().at(1).displayID, second) << "the same output, the same number";
}

} // namespace
} // namespace glimmerly
