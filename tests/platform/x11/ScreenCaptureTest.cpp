#include "platform/qt/QtMainQueue.h"
#include "platform/x11/X11ScreenCapture.h"
#include "platform/x11/X11Screens.h"
#include "tests/platform/x11/X11Desktop.h"
#include "tests/support/desktop/XcbClient.h"

#include <QWidget>
#include <gtest/gtest.h>

#include <poll.h>

#include <cmath>
#include <future>
#include <random>
#include <thread>
#include <utility>

namespace glimmerly {
namespace {

using namespace std::chrono_literals;

/// The picture of a display got step by step, each checked.
Bitmap captureStepByStep(ScreenCapture& capture) {
    std::optional<Result<std::vector<ShareableDisplay>>> displays;
    capture.fetchShareableDisplays([&](auto answer) { displays = std::move(answer); });
    EXPECT_FALSE(displays) << "answered from within the call";
    EXPECT_TRUE(runUntil([&] { return displays.has_value(); }));
    EXPECT_TRUE(*displays && !(*displays)->empty());
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
    EXPECT_TRUE(runUntil([&] { return image.has_value(); }));
    EXPECT_TRUE(*image);
    EXPECT_EQ((*image)->width(), configuration.width);
    EXPECT_EQ((*image)->height(), configuration.height);
    return **image;
}

/// Fills the root window with random pixels and answers what a capture must make of them.
Bitmap paintRandomly(const XClient& client, PixelSize size) {
    xcb_connection_t* const x = client.get();
    const int depth = client.depth();
    const auto pixelBytes = depth == 16 ? 2U : 4U;
    const auto scaled = [](std::uint32_t value, std::uint32_t highest) {
        return static_cast<Bitmap::Pixel>(std::lround(value * 255.0 / highest));
    };
    std::mt19937 random(5);
    Bitmap expected(size);
    const xcb_gcontext_t context = xcb_generate_id(x);
    xcb_create_gc(x, context, client.root(), 0, nullptr);
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
        xcb_put_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, client.root(), context,
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
        const Bitmap expected = paintRandomly(client, area.size());
        client.sync();
        EXPECT_EQ(captureStepByStep(capture), expected);
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

/// Another program whose window covers the display. It has no background and takes its time to paint.
class SlowProgram {
public:
    explicit SlowProgram(PixelRect area) : area_(area) {
        std::promise<void> painted;
        auto ready = painted.get_future();
        thread_ = std::jthread([this, &painted](const std::stop_token& stop) { run(stop, painted); });
        ready.wait();
    }

private:
    void run(const std::stop_token& stop, std::promise<void>& painted) const {
        const auto connection = X11Connection::open().value();
        xcb_connection_t* const x = connection->get();
        const xcb_window_t window = xcb_generate_id(x);
        const std::uint32_t attributes[] = {1, XCB_EVENT_MASK_EXPOSURE};
        xcb_create_window(x, XCB_COPY_FROM_PARENT, window, connection->root(),
                          static_cast<std::int16_t>(area_.x), static_cast<std::int16_t>(area_.y),
                          static_cast<std::uint16_t>(area_.width), static_cast<std::uint16_t>(area_.height),
                          0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, attributes);
        xcb_map_window(x, window);
        const xcb_gcontext_t context = xcb_generate_id(x);
        const std::uint32_t colour = 0x228844;
        xcb_create_gc(x, context, window, XCB_GC_FOREGROUND, &colour);
        xcb_flush(x);
        for (bool first = true; !stop.stop_requested();) {
            pollfd events{xcb_get_file_descriptor(x), POLLIN, 0};
            ::poll(&events, 1, 5);
            const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(x)};
            if (!event)
                continue;
            std::this_thread::sleep_for(std::chrono::milliseconds(first ? 0 : 40)); // that is how slow it is
            const xcb_rectangle_t all{0, 0, static_cast<std::uint16_t>(area_.width),
                                      static_cast<std::uint16_t>(area_.height)};
            xcb_poly_fill_rectangle(x, window, context, 1, &all);
            const XcbOwned<xcb_get_input_focus_reply_t> done(
                xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));
            if (std::exchange(first, false))
                painted.set_value();
        }
    }

    PixelRect area_;
    std::jthread thread_;
};

TEST(ScreenCapture, X11LeavesOutAWindowOfOursThatHasJustGone) {
    const X11Desktop desktop;
    QtMainQueue queue;
    const X11Screens screens(X11Connection::open().value());
    X11ScreenCapture capture(X11Connection::open().value(), screens, queue,
                             {.longestWithoutPainting = 10s, .longest = 10s}); // however busy the machine is
    const SlowProgram program({0, 0, 640, 300});
    const XcbClient client;
    const Bitmap before = client.pixels({0, 0, 640, 481});

    QWidget ours;
    ours.setWindowFlags(Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    ours.setStyleSheet("background: #ff00ff");
    ours.setGeometry(0, 0, 640, 481);
    for (int i = 0; i < 3; ++i) {
        ours.show();
        ASSERT_TRUE(runUntil(
            [&] { return client.pixel(320, 100) == 0xffff00ff && client.pixel(320, 400) == 0xffff00ff; }));
        ours.hide();
        Bitmap picture = captureStepByStep(capture);
        for (int y = 0; y < picture.height(); ++y)
            std::ranges::for_each(picture.row(y), [](Bitmap::Pixel& pixel) { pixel |= 0xff000000; });
        EXPECT_EQ(picture, before);
    }
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
    EXPECT_EQ(grabber.grab({10, 10, 0, 0}).error().code(), ENODATA) << "a monitor without pixels";
    ASSERT_TRUE(grabber.grab({0, 0, 640, 480})) << "goes on after an error";
    server.kill();
    EXPECT_EQ(grabber.grab({0, 0, 640, 480}).error().domain(), "X11");
}

} // namespace
} // namespace glimmerly
