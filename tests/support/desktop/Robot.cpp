#include "tests/support/desktop/Robot.h"

#include "tests/support/desktop/WaitUntil.h"

#include <xcb/xtest.h>

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

void Robot::waitForKeyboard() const {
    if (!waitUntil([this] { return isKeyboardFree(); }))
        throw std::runtime_error("a program keeps the keyboard to itself");
}

void Robot::pressHotkey() const {
    waitForKeyboard();
    type({Key::super, Key::leftShift, Key::a});
}

bool Robot::isKeyboardFree() const {
    const auto cookie = xcb_grab_keyboard(client_.get(), 1, client_.root(), XCB_CURRENT_TIME,
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const Reply<xcb_grab_keyboard_reply_t> grab(xcb_grab_keyboard_reply(client_.get(), cookie, nullptr));
    xcb_ungrab_keyboard(client_.get(), XCB_CURRENT_TIME);
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
