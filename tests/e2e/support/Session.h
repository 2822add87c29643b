#pragma once

#include "tests/e2e/support/Clipboard.h"
#include "tests/e2e/support/Desktop.h"
#include "tests/e2e/support/Glimmerly.h"
#include "tests/support/desktop/Robot.h"

#include <gtest/gtest.h>

namespace glimmerly::e2e {

/// The program on a desktop of its own, with hands and eyes, and the steps that most tests take.
struct Session {
    explicit Session(const Desktop::Options& desktopOptions, const Glimmerly::Options& programOptions = {})
        : desktop(desktopOptions), program(desktop, programOptions) {}
    Session() : Session(Desktop::Options()) {}

    Desktop desktop;
    Robot robot{desktop.client()};
    Clipboard clipboard{desktop};
    Glimmerly program;

    /// The server's pixels of the display with the mouse; that of the whole screen unless there are several.
    PixelRect display{0, 0, desktop.client().size().width, desktop.client().size().height};

    /// Presses the hotkey, then waits as `waitForOverlay`.
    [[nodiscard]] testing::AssertionResult openOverlay();
    /// Waits until exactly one overlay covers `display` and has the keyboard.
    [[nodiscard]] testing::AssertionResult waitForOverlay();
    [[nodiscard]] testing::AssertionResult waitForNoOverlay();

    /// Opens the overlay, drags from `from` to `to`, presses Return, and reads the clipboard once the overlay
    /// has gone; none when any of it failed.
    [[nodiscard]] std::optional<Bitmap> copySelection(Pixel from, Pixel to, Key finish = Key::returnKey);
};

/// Says where two pictures differ first, or how their sizes do.
[[nodiscard]] testing::AssertionResult samePixels(const std::optional<Bitmap>& actual,
                                                  const Bitmap& expected);

} // namespace glimmerly::e2e
