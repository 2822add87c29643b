#include "tests/support/desktop/Robot.h"

#include "tests/support/desktop/WaitUntil.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <cctype>
#include <ranges>
#include <stdexcept>

namespace glimmerly {

void Robot::fake(std::uint8_t type, std::uint8_t detail, Pixel place) const {
    xcb_test_fake_input(client_.get(), type, detail, XCB_CURRENT_TIME, client_.root(),
                        static_cast<std::int16_t>(place.x), static_cast<std::int16_t>(place.y), 0);
    client_.sync();
}

void Robot::press(Key key) const {
    fake(XCB_KEY_PRESS, static_cast<std::uint8_t>(key));
}

void Robot::release(Key key) const {
    fake(XCB_KEY_RELEASE, static_cast<std::uint8_t>(key));
}

void Robot::type(const std::vector<Key>& keys) const {
    for (const Key key : keys)
        press(key);
    for (const Key key : keys | std::views::reverse)
        release(key);
}

void Robot::typeText(std::string_view text) const {
    static constexpr std::pair<std::string_view, int> rows[] = {{"1234567890-", 10}, {"qwertyuiop", 24},
                                                                {"asdfghjkl", 38},   {"zxcvbnm,./", 52},
                                                                {" ", 65},           {"\n", 36}};
    for (const char character : text) {
        const bool isUpper = std::isupper(static_cast<unsigned char>(character)) != 0;
        const char lower = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
        const auto row = std::ranges::find_if(rows, [&](const auto& r) { return r.first.contains(lower); });
        if (row == std::end(rows))
            throw std::invalid_argument("no key for " + std::string(1, character));
        const auto key = static_cast<Key>(row->second + static_cast<int>(row->first.find(lower)));
        type(isUpper ? std::vector{Key::leftShift, key} : std::vector{key});
    }
}

void Robot::waitForKeyboard() const {
    if (!waitUntil([this] { return isKeyboardFree(); }))
        throw std::runtime_error("a program keeps the keyboard to itself");
}

void Robot::pressHotkey() const {
    waitForKeyboard();
    type({Key::super, Key::leftShift, Key::a});
}

bool Robot::isKeyboardFree() const {
    // With the server to ourselves, so that our own try can never be what keeps a program from the keyboard.
    xcb_grab_server(client_.get());
    const auto cookie = xcb_grab_keyboard(client_.get(), 1, client_.root(), XCB_CURRENT_TIME,
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const Reply<xcb_grab_keyboard_reply_t> grab(xcb_grab_keyboard_reply(client_.get(), cookie, nullptr));
    xcb_ungrab_keyboard(client_.get(), XCB_CURRENT_TIME);
    xcb_ungrab_server(client_.get());
    client_.sync();
    return grab && grab->status == XCB_GRAB_STATUS_SUCCESS;
}

void Robot::moveTo(Pixel place) const {
    fake(XCB_MOTION_NOTIFY, 0, place);
}

void Robot::pressButton(int button) const {
    fake(XCB_BUTTON_PRESS, static_cast<std::uint8_t>(button));
}

void Robot::releaseButton(int button) const {
    fake(XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(button));
}

void Robot::click(Pixel place, int button) const {
    moveTo(place);
    pressButton(button);
    releaseButton(button);
}

void Robot::drag(Pixel from, Pixel to) const {
    moveTo(from);
    pressButton();
    moveTo({(from.x + to.x) / 2, (from.y + to.y) / 2});
    moveTo(to);
    releaseButton();
}

Pixel Robot::position() const {
    const Reply<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(client_.get(), xcb_query_pointer(client_.get(), client_.root()), nullptr));
    return {pointer->root_x, pointer->root_y};
}

} // namespace glimmerly
