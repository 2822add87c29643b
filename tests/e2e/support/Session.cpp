#include "tests/e2e/support/Session.h"

namespace glimmerly::e2e {

testing::AssertionResult Session::openOverlay() {
    robot.pressHotkey();
    return waitForOverlay();
}

testing::AssertionResult Session::waitForOverlay() {
    const auto isOpen = [this] {
        const auto windows = program.overlays(display);
        return windows.size() == 1 && desktop.client().focusedWindow() == windows.front();
    };
    if (waitUntil(isOpen))
        return testing::AssertionSuccess();
    const auto windows = program.overlays(display);
    return testing::AssertionFailure()
           << windows.size() << " overlays, the first " << (windows.empty() ? 0 : windows.front())
           << ", focus " << desktop.client().focusedWindow() << "\n"
           << program.diagnostics();
}

testing::AssertionResult Session::waitForNoOverlay() {
    if (waitUntil([this] { return program.overlays(display).empty(); }))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "the overlay stays\n" << program.diagnostics();
}

std::optional<Bitmap> Session::copySelection(Pixel from, Pixel to, Key finish) {
    if (!openOverlay())
        return std::nullopt;
    robot.drag(from, to);
    robot.type({finish});
    return waitForNoOverlay() ? clipboard.picture() : std::nullopt;
}

testing::AssertionResult samePixels(const std::optional<Bitmap>& actual, const Bitmap& expected) {
    if (!actual)
        return testing::AssertionFailure() << "there is no picture";
    if (actual->size() != expected.size())
        return testing::AssertionFailure()
               << "the picture is " << actual->width() << " x " << actual->height() << ", expected "
               << expected.width() << " x " << expected.height();
    for (int y = 0; y < expected.height(); ++y) {
        const auto [found, wanted] = std::ranges::mismatch(actual->row(y), expected.row(y));
        if (found != actual->row(y).end())
            return testing::AssertionFailure() << "pixel (" << found - actual->row(y).begin() << ", " << y
                                               << ") is " << std::hex << *found << ", expected " << *wanted;
    }
    return testing::AssertionSuccess();
}

} // namespace glimmerly::e2e
