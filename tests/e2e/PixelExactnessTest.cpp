// What lands on the clipboard is what the screen showed, bit for bit, at every scale.
#include "tests/e2e/support/Session.h"
#include "tests/support/NoisePicture.h"

namespace glimmerly::e2e {
namespace {

constexpr int width = 1280;
constexpr int height = 800;

struct Drag {
    const char* name;
    Pixel from;
    Pixel to;
    PixelRect expected;
};

// The pointer on the last column or row stands for the far edge, so that the whole display can be selected.
constexpr Drag drags[] = {
    {"inside, odd numbers", {101, 67}, {635, 421}, {101, 67, 534, 354}},
    {"dragged up and to the left", {900, 700}, {333, 91}, {333, 91, 567, 609}},
    {"left edge", {0, 200}, {77, 300}, {0, 200, 77, 100}},
    {"right edge", {1000, 200}, {width - 1, 300}, {1000, 200, width - 1000, 100}},
    {"top edge", {500, 0}, {700, 33}, {500, 0, 200, 33}},
    {"bottom edge", {500, 750}, {700, height - 1}, {500, 750, 200, 50}},
    {"top left corner", {0, 0}, {9, 7}, {0, 0, 9, 7}},
    {"bottom right corner", {width - 9, height - 7}, {width - 1, height - 1}, {width - 9, height - 7, 9, 7}},
    {"whole display", {0, 0}, {width - 1, height - 1}, {0, 0, width, height}},
    {"whole display, backwards", {width - 1, height - 1}, {0, 0}, {0, 0, width, height}},
};

class AtScale : public testing::TestWithParam<double> {
protected:
    Session session{Desktop::Options{.size = {width, height}},
                    Glimmerly::Options{.environment = {{"QT_SCALE_FACTOR", std::to_string(GetParam())}}}};
    Bitmap screen = session.desktop.client().pixels();
};

TEST_P(AtScale, TheClipboardHoldsTheScreensPixels) {
    for (const auto& drag : drags) {
        SCOPED_TRACE(drag.name);
        EXPECT_TRUE(samePixels(session.copySelection(drag.from, drag.to), screen.view(drag.expected)));
    }
    EXPECT_TRUE(waitUntil([&] { return session.program.captureFiles().empty(); }));
}

TEST_P(AtScale, TwoByTwoPointsAreTheLeastThatIsCopied) {
    const int side = static_cast<int>(std::ceil(2 * GetParam()));
    EXPECT_TRUE(samePixels(session.copySelection({300, 300}, {300 + side, 300 + side}),
                           screen.view({300, 300, side, side})));

    ASSERT_TRUE(session.openOverlay());
    session.robot.drag({300, 300}, {300 + side - 1, 400});
    session.robot.type({Key::returnKey});
    EXPECT_TRUE(session.program.waitForLog("Copy selection to pasteboard returned false (missing crop bitmap "
                                           "or pasteboard write failed)"));
    EXPECT_TRUE(session.waitForOverlay()) << "a copy that failed leaves the overlay open";
}

TEST_P(AtScale, TheOverlayShowsThePixelsThatItCaptured) {
    const auto& client = session.desktop.client();
    ASSERT_TRUE(session.openOverlay());
    client.setBackground(noisePicture(client.size(), 2));
    session.robot.drag({200, 150}, {1000, 650});
    // Clear of the frame, the tags and the bar's shadow the picture stands untouched, once it is painted.
    const PixelRect inside{220, 200, 760, 380};
    const auto shown = [&] { return client.pixels(inside) == screen.view(inside); };
    EXPECT_TRUE(waitUntil(shown)) << samePixels(client.pixels(inside), screen.view(inside)).message();
    session.robot.type({Key::returnKey});
    ASSERT_TRUE(session.waitForNoOverlay());
    EXPECT_TRUE(samePixels(session.clipboard.picture(), screen.view({200, 150, 800, 500})));
}

INSTANTIATE_TEST_SUITE_P(Scales, AtScale, testing::Values(1.0, 1.25, 1.5, 2.0), [](const auto& test) {
    return "Percent" + std::to_string(static_cast<int>(test.param * 100));
});

} // namespace
} // namespace glimmerly::e2e
