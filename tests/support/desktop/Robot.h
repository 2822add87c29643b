#pragma once

#include "tests/support/desktop/XClient.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace glimmerly {

/// Keys by their place on the keyboard, whatever the layout prints on them.
enum class Key : std::uint8_t {
    escape = 9,
    tab = 23,
    returnKey = 36,
    leftControl = 37,
    a = 38,
    leftShift = 50,
    z = 52,
    space = 65,
    capsLock = 66,
    numLock = 77,
    keypadEnter = 104,
    up = 111,
    down = 116,
    super = 133,
};

/// A position in the server's pixels, y downwards.
struct Pixel {
    int x = 0;
    int y = 0;

    bool operator==(const Pixel&) const = default;
};

/// Hands on keyboard and mouse: events that no program can tell from real ones.
class Robot {
public:
    explicit Robot(const XClient& client) : client_(client) {}

    void press(Key key) const;
    void release(Key key) const;
    /// Presses `keys` in that order and lets them go in reverse.
    void type(const std::vector<Key>& keys) const;
    /// Types letters, digits and the marks of a path on a US keyboard; throws for anything else.
    void typeText(std::string_view text) const;
    /// Whether no program has the keyboard to itself.
    [[nodiscard]] bool isKeyboardFree() const;
    /// Waits until that is so: the one under test keeps it until the key that
    /// closed an overlay has come up, which takes a hand longer than this.
    void waitForKeyboard() const;
    /// Presses the hotkey after `waitForKeyboard`.
    void pressHotkey() const;

    void moveTo(Pixel place) const;
    void pressButton(int button = 1) const;
    void releaseButton(int button = 1) const;
    void click(Pixel place, int button = 1) const;
    void drag(Pixel from, Pixel to) const;
    [[nodiscard]] Pixel position() const;

private:
    void fake(std::uint8_t type, std::uint8_t detail, Pixel place = {}) const;

    const XClient& client_;
};

} // namespace glimmerly
