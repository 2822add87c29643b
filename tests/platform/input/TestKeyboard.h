#pragma once

#include "platform/VirtualKeyCodes.h"
#include "platform/x11/X11KeyboardExtension.h"
#include "platform/x11/X11ServerTime.h"
#include "tests/support/desktop/Robot.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace glimmerly {

/// The hands on the X server's keyboard. Keys are named by their virtual key codes.
class TestKeyboard {
public:
    static constexpr std::int64_t superKey = 55;
    static constexpr std::int64_t altKey = 58;
    static constexpr std::int64_t shiftKey = 56;
    static constexpr std::int64_t controlKey = 59;
    static constexpr std::int64_t capsLock = 57;
    static constexpr std::int64_t numLock = 71;

    TestKeyboard() : connection_(X11Connection::open().value()) {
        if (!X11KeyboardExtension::enable(*connection_))
            throw std::runtime_error("no keyboard extension");
        setLayout("-layout us -option ''");
        lock(0, 0);
    }

    void down(std::int64_t key) const { robot_.press(place(key)); }
    void up(std::int64_t key) const { robot_.release(place(key)); }
    void tap(std::int64_t key) const { tap({}, key); }
    /// While `modifiers` are held.
    void tap(const std::vector<std::int64_t>& modifiers, std::int64_t key) const {
        std::vector<Key> keys;
        std::ranges::transform(modifiers, std::back_inserter(keys), place);
        keys.push_back(place(key));
        robot_.type(keys);
    }

    /// Sets exactly these modifiers as locked, and the keyboard group.
    void lock(std::uint8_t modifiers, std::uint8_t group) {
        xcb_xkb_latch_lock_state(connection_->get(), XCB_XKB_ID_USE_CORE_KBD, 0xFF, modifiers, 1, group, 0, 0,
                                 0);
        connection_->sync();
    }
    /// The server's clock, in milliseconds.
    [[nodiscard]] xcb_timestamp_t time() const { return serverTime(*connection_); }
    [[nodiscard]] bool isDown(std::int64_t key) const {
        const Reply<xcb_query_keymap_reply_t> keymap(
            xcb_query_keymap_reply(client_.get(), xcb_query_keymap(client_.get()), nullptr));
        const xcb_keycode_t code = keycode(key);
        return (keymap->keys[code / 8] & (1U << (code % 8))) != 0;
    }

    /// Runs a client of the server to its end.
    static void run(const std::string& command) {
        if (std::system(command.c_str()) != 0)
            throw std::runtime_error("failed: " + command);
    }
    static void setLayout(const std::string& options) { run("setxkbmap -model pc105 " + options); }

    [[nodiscard]] static xcb_keycode_t keycode(std::int64_t key) {
        return static_cast<xcb_keycode_t>(evdevCodesFromVirtualKeyCode(key).at(0) + firstXKeycode);
    }

private:
    static Key place(std::int64_t key) { return static_cast<Key>(keycode(key)); }
    std::unique_ptr<X11Connection> connection_;
    XClient client_{{}};
    Robot robot_{client_};
};

} // namespace glimmerly
