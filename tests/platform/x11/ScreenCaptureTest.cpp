#include "platform/qt/QtMainQueue.h"
#include "platform/x11/X11ScreenCapture.h"
#include "platform/x11/X11Screens.h"
#include "tests/platform/x11/X11Desktop.h"
#include "tests/platform/x11/XcbClient.h"
#include "tests/support/FakeMainQueue.h"
#include "tests/support/FakeScreenCapture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace glimmerly {
namespace {

/// The picture of a display got step by step, each checked; `turn` runs the main loop once.
Bitmap expectContract(ScreenCapture& capture, const std::function<void()>& turn) {
    std::optional<Result<std::vector<ShareableDisplay>>> displays;
    capture.fetchShareableDisplays([&](auto answer) { displays = std::move(answer); });
    EXPECT_FALSE(displays) << "answered from within the call";
    turn();
    EXPECT_TRUE(displays && *displays && !(*displays)->empty());
    const ShareableDisplay display = (*displays)->front();
    const ContentFilter filter = capture.contentFilter(display);
    EXPECT_EQ(filter.displayID, display.displayID);
    EXPECT_EQ(std::llround(filter.contentRect.width), display.width);
    EXPECT_EQ(std::llround(filter.contentRect.height), display.height);

    CaptureConfiguration configuration;
    configuration.width = std::llround(filter.contentRect.width * filter.pointPixelScale);
    configuration.height = std::llround(filter.contentRect.height * filter.pointPixelScale);
    std::optional<Result<Bitmap>> image;
    capture.captureImage(filter, configuration, [&](auto answer) { image = std::move(answer); });
    EXPECT_FALSE(image) << "answered from within the call";
    turn();
    EXPECT_TRUE(image && *image);
    EXPECT_EQ((*image)->width(), configuration.width);
    EXPECT_EQ((*image)->height(), configuration.height);
    return **image;
}

TEST(ScreenCapture, FakeKeepsTheContract) {
    FakeMainQueue queue;
    FakeScreenCapture capture(queue);
    expectContract(capture, [&] { queue.runAll(); });
}

/// Fills the root window with random pixels and answers what a capture must make of them.
Bitmap paintRandomly(const X11Connection& connection, PixelSize size) {
    xcb_connection_t* const x = connection.get();
    const int depth = connection.screen().root_depth;
    const auto pixelBytes = depth == 16 ? 2U : 4U;
    const auto scaled = [](std::uint32_t value, std::uint32_t highest) {
        return static_cast<Bitmap::Pixel>(std::lround(value * 255.0 / highest));
    };
    std::mt19937 random(5);
    Bitmap expected(size);
    const xcb_gcontext_t context = xcb_generate_id(x);
    xcb_create_gc(x, context, connection.root(), 0, nullptr);
    for (int y = 0; y < size.height; ++y) {
        std::vector<std::uint8_t> data((static_cast<std::size_t>(size.width) * pixelBytes + 3) & ~3U);
        for (std::size_t i = 0; i < static_cast<std::size_t>(size.width); ++i) {
            const auto value = static_cast<std::uint32_t>(random());
            std::memcpy(&data[i * pixelBytes], &value, pixelBytes);
            Bitmap::Pixel& pixel = expected.row(y)[i];
            if (depth == 16)
                pixel = scaled(value >> 11 & 31, 31) << 16 | scaled(value >> 5 & 63, 63) << 8 |
                        scaled(value & 31, 31);
            else if (depth == 30)
                pixel = scaled(value >> 20 & 1023, 1023) << 16 | scaled(value >> 10 & 1023, 1023) << 8 |
                        scaled(value & 1023, 1023);
            else
                pixel = value & 0xffffff;
            pixel |= 0xff000000;
        }
        xcb_put_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, connection.root(), context,
                      static_cast<std::uint16_t>(size.width), 1, 0, static_cast<std::int16_t>(y), 0,
                      static_cast<std::uint8_t>(depth), static_cast<std::uint32_t>(data.size()), data.data());
    }
    return expected;
}

struct ServerKind {
    const char* name;
    const char* screen;
    std::vector<std::string> options;
    const char* scale = "1";
};

class OnServer : public testing::TestWithParam<ServerKind> {};

TEST_P(OnServer, CapturesEveryPixelAsItIs) {
    const X11Desktop desktop(
        {.scale = GetParam().scale, .screen = GetParam().screen, .serverOptions = GetParam().options});
    QtMainQueue queue;
    const X11Screens screens(X11Connection::open().value());
    X11ScreenCapture capture(X11Connection::open().value(), screens, queue);
    const XcbClient client;
    const PixelRect area = screens.screens().at(0).nativeFrame;
    for (int i = 0; i < 2; ++i) { // the second one finds everything prepared
        const Bitmap expected = paintRandomly(client.connection(), area.size());
        client.sync();
        EXPECT_EQ(expectContract(capture, [] { QCoreApplication::processEvents(); }), expected);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, OnServer,
    testing::Values(ServerKind{"Depth24", "1931x1087x24", {}},
                    ServerKind{"Depth24Scaled", "2560x1440x24", {}, "1.75"},
                    ServerKind{"Depth24WithoutSharedMemory", "1931x1087x24", {"-extension", "MIT-SHM"}},
                    ServerKind{"Depth30", "801x600x30", {}}, ServerKind{"Depth16", "801x600x16", {}},
                    ServerKind{"Depth16WithoutSharedMemory", "801x600x16", {"-extension", "MIT-SHM"}},
                    ServerKind{"WithoutRandR", "801x600x24", {"-extension", "RANDR"}},
                    ServerKind{"OnePixelHigh", "3000x1x24", {}}),
    [](const auto& kind) { return kind.param.name; });

TEST(ScreenCapture, X11ReportsWhatCannotBeCaptured) {
    X11Desktop desktop;
    QtMainQueue queue;
    const X11Screens screens(X11Connection::open().value());
    X11ScreenCapture capture(X11Connection::open().value(), screens, queue);
    const auto outcome = [&](std::uint32_t displayID) {
        std::optional<Result<Bitmap>> image;
        capture.captureImage({.displayID = displayID, .pointPixelScale = 1, .contentRect = {}}, {},
                             [&](auto answer) { image = std::move(answer); });
        QCoreApplication::processEvents();
        return image.value_or(Bitmap());
    };
    const auto displayID = screens.screens().at(0).displayID.value();
    EXPECT_TRUE(outcome(displayID));
    EXPECT_EQ(outcome(displayID + 1000).error().code(), ENODEV);
}

TEST(ScreenCapture, X11RefusesADisplayWithAPalette) {
    const X11Desktop desktop({.screen = "640x480x8"});
    const auto connection = X11Connection::open().value();
    X11Grabber grabber(*connection);
    EXPECT_EQ(grabber.grab({0, 0, 10, 10}).error().code(), ENOTSUP);
}

TEST(ScreenCapture, X11GrabberReportsErrorsOfTheServerAndItsEnd) {
    XvfbServer server("640x480x24");
    const ScopedEnvironment display("DISPLAY", server.display().c_str());
    const auto connection = X11Connection::open().value();
    X11Grabber grabber(*connection);
    ASSERT_TRUE(grabber.grab({600, 400, 40, 80}));
    EXPECT_EQ(grabber.grab({600, 400, 41, 80}).error().code(), XCB_MATCH) << "reaches beyond the root window";
    ASSERT_TRUE(grabber.grab({0, 0, 640, 480})) << "goes on after an error";
    server.kill();
    EXPECT_EQ(grabber.grab({0, 0, 640, 480}).error().domain(), "X11");
}

} // namespace
} // namespace glimmerly
