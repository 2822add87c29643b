#include "platform/x11/X11HotkeyService.h"

#include "platform/VirtualKeyCodes.h"

#include <QCoreApplication>
#include <xcb/xinput.h>

#include <algorithm>

namespace glimmerly {

namespace {

using Press = X11HotkeyHeldKeys::Press;
using Order = X11HotkeyHeldKeys::Order;

struct PressedEvent : HotkeyEvent {
    explicit PressedEvent(HotkeyIdentifier ofRegistration) : registered(ofRegistration) {}
    [[nodiscard]] std::uint32_t kind() const override { return hotkeyPressedEventKind; }
    [[nodiscard]] std::expected<HotkeyIdentifier, HotkeyStatus> identifier() const override {
        return registered;
    }

    HotkeyIdentifier registered;
};

/// Input extension 2.1, the first whose raw events reach us while others hold the keyboard.
Result<std::uint8_t> enableInputExtension(X11Connection& connection) {
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection.get(), &xcb_input_id);
    if (!extension || !extension->present)
        return failure({"X11", -1, "The X server has no input extension."});
    const auto cookie = xcb_input_xi_query_version(connection.get(), 2, 1);
    const XcbOwned<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(connection.get(), cookie, nullptr));
    if (!version || version->major_version < 2)
        return failure({"X11", -1, "The X server's input extension is older than version 2."});
    return extension->major_opcode;
}

/// Without this the server makes up a release before each repeat of a held key.
void hideReleasesOfRepeats(X11Connection& connection) {
    constexpr std::uint32_t detectable = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto cookie =
        xcb_xkb_per_client_flags(connection.get(), XCB_XKB_ID_USE_CORE_KBD, detectable, detectable, 0, 0, 0);
    const XcbOwned<xcb_xkb_per_client_flags_reply_t> done(
        xcb_xkb_per_client_flags_reply(connection.get(), cookie, nullptr));
}

std::vector<xcb_keycode_t> keycodesOf(std::uint32_t virtualKeyCode, const xcb_setup_t& setup) {
    std::vector<xcb_keycode_t> keycodes;
    for (const std::uint32_t evdevCode : evdevCodesFromVirtualKeyCode(virtualKeyCode)) {
        const std::uint32_t keycode = evdevCode + firstXKeycode;
        if (keycode >= setup.min_keycode && keycode <= setup.max_keycode)
            keycodes.push_back(static_cast<xcb_keycode_t>(keycode));
    }
    return keycodes;
}

} // namespace

Result<std::unique_ptr<X11HotkeyService>> X11HotkeyService::open() {
    auto connection = X11Connection::open();
    if (!connection)
        return failure(connection.error());
    const auto keyboard = X11KeyboardExtension::enable(**connection);
    if (!keyboard)
        return failure(keyboard.error());
    const auto inputOpcode = enableInputExtension(**connection);
    if (!inputOpcode)
        return failure(inputOpcode.error());
    hideReleasesOfRepeats(**connection);
    return std::unique_ptr<X11HotkeyService>(
        new X11HotkeyService(std::move(*connection), *keyboard, *inputOpcode));
}

X11HotkeyService::X11HotkeyService(std::unique_ptr<X11Connection> connection, X11KeyboardExtension keyboard,
                                   std::uint8_t inputOpcode)
    : connection_(std::move(connection)), keyboard_(keyboard), inputOpcode_(inputOpcode),
      modifiers_(X11HotkeyModifiers::read(connection_->get())),
      events_(*connection_, [this](const xcb_generic_event_t& event) { handle(event); }) {
    QCoreApplication::instance()->installNativeEventFilter(this);
}

X11HotkeyService::~X11HotkeyService() = default;

HotkeyService::Answer<HotkeyService::HandlerRef> X11HotkeyService::installHandler(Handler handler) {
    handlers_.emplace(++lastRef_, std::move(handler));
    return {hotkey_status::success, lastRef_};
}

HotkeyStatus X11HotkeyService::removeHandler(HandlerRef ref) {
    return handlers_.erase(ref) == 1 ? hotkey_status::success : hotkey_status::parameterError;
}

HotkeyService::Answer<HotkeyService::HotkeyRef>
X11HotkeyService::registerHotkey(std::uint32_t keyCode, std::uint32_t carbonFlags,
                                 HotkeyIdentifier identifier) {
    Registration registration{carbonFlags, identifier,
                              keycodesOf(keyCode, *xcb_get_setup(connection_->get())), 0, nullptr};
    // Before the grab, from which on a press counts. Keys that are still grabbed as before are known already,
    // and looking would send the letting go alone, without the grab.
    if (registration.keycodes != letGoInThisTurn_)
        ignoreWhatIsDown(registration);
    if (const HotkeyStatus status = grab(registration); status != hotkey_status::success)
        return {status, 0};
    registrations_.emplace(++lastRef_, std::move(registration));
    return {hotkey_status::success, lastRef_};
}

HotkeyStatus X11HotkeyService::unregisterHotkey(HotkeyRef ref) {
    // What was pressed before counts.
    events_.catchUp();
    const auto found = registrations_.find(ref);
    if (found == registrations_.end())
        return hotkey_status::hotkeyInvalid;
    letGoInThisTurn_ = std::move(found->second.keycodes);
    QMetaObject::invokeMethod(&nextTurn_, [this] { letGoInThisTurn_.clear(); }, Qt::QueuedConnection);
    registrations_.erase(found);
    return hotkey_status::success;
}

HotkeyStatus X11HotkeyService::grab(Registration& registration) {
    const auto required = modifiers_.required(registration.carbonFlags);
    if (registration.keycodes.empty() || !required)
        return hotkey_status::hotkeyInvalid;
    const bool heldByUs = std::ranges::any_of(registrations_, [&](const auto& entry) {
        const Registration& other = entry.second;
        return other.grab && other.requiredModifiers == *required && other.keycodes == registration.keycodes;
    });
    if (heldByUs)
        return hotkey_status::hotkeyExists;
    auto grab =
        std::make_unique<X11HotkeyGrab>(*connection_, registration.keycodes, modifiers_.variants(*required));
    if (grab->status() != hotkey_status::success)
        return grab->status();
    registration.requiredModifiers = *required;
    registration.grab = std::move(grab);
    return hotkey_status::success;
}

void X11HotkeyService::ignoreWhatIsDown(const Registration& registration) {
    // Watch first, then look, and no release is missed.
    watchReleases(Releases::watched);
    for (const xcb_keycode_t keycode : registration.keycodes) {
        if (isDown(keycode))
            heldKeys_.hold(keycode);
    }
    if (!heldKeys_.anyHeld())
        watchReleases(Releases::ignored);
}

void X11HotkeyService::followModifiers() {
    const auto current = X11HotkeyModifiers::read(connection_->get());
    if (current == modifiers_)
        return;
    modifiers_ = current;
    for (auto& [ref, registration] : registrations_)
        registration.grab.reset();
    // One that is now impossible, or another's, stays registered until the keyboard changes again.
    std::vector<HotkeyStatus> losses;
    for (auto& [ref, registration] : registrations_) {
        if (const HotkeyStatus status = grab(registration); status != hotkey_status::success)
            losses.push_back(status);
    }
    for (const HotkeyStatus status : losses) { // afterwards, as the handler may register and unregister
        if (onLoss_)
            onLoss_(status);
    }
}

const X11HotkeyService::Registration* X11HotkeyService::find(const xcb_key_press_event_t& event) const {
    const std::uint16_t held = modifiers_.relevant(event.state);
    const auto found = std::ranges::find_if(registrations_, [&](const auto& entry) {
        const Registration& registration = entry.second;
        return registration.grab && registration.requiredModifiers == held &&
               std::ranges::find(registration.keycodes, event.detail) != registration.keycodes.end();
    });
    return found == registrations_.end() ? nullptr : &found->second;
}

void X11HotkeyService::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7F) {
    case XCB_KEY_PRESS:
        handleGrabbedPress(reinterpret_cast<const xcb_key_press_event_t&>(event));
        return;
    case XCB_KEY_RELEASE: {
        const auto& key = reinterpret_cast<const xcb_key_release_event_t&>(event);
        release(key.detail, key.time);
        return;
    }
    case XCB_GE_GENERIC: {
        const auto& raw = reinterpret_cast<const xcb_input_raw_key_release_event_t&>(event);
        if (raw.extension == inputOpcode_ && raw.event_type == XCB_INPUT_RAW_KEY_RELEASE)
            release(static_cast<xcb_keycode_t>(raw.detail), raw.time);
        return;
    }
    default:
        if (keyboard_.change(event) == X11KeyboardExtension::Change::keymap)
            followModifiers();
    }
}

void X11HotkeyService::handleGrabbedPress(const xcb_key_press_event_t& event) {
    const Registration* registration = find(event);
    const bool isFirst =
        registration && heldKeys_.press(event.detail, event.time, Order::kept) == Press::first;
    // While the grab lasts the release comes as a plain event: watch first, then let go, and none is missed.
    if (isFirst)
        watchReleases(Releases::watched);
    // The grab would last until the key is released, and the overlay needs the keyboard at once.
    xcb_ungrab_keyboard(connection_->get(), XCB_CURRENT_TIME);
    connection_->sync();
    if (isFirst)
        deliver(registration->identifier);
}

bool X11HotkeyService::nativeEventFilter(const QByteArray& type, void* message, qintptr* /*result*/) {
    if (type != "xcb_generic_event_t" ||
        static_cast<const xcb_generic_event_t*>(message)->response_type != XCB_KEY_PRESS)
        return false;
    const auto& event = *static_cast<const xcb_key_press_event_t*>(message);
    const Registration* registration = find(event);
    if (!registration)
        return false;
    handlePressInOwnWindow(registration->identifier, event);
    return true;
}

void X11HotkeyService::handlePressInOwnWindow(HotkeyIdentifier identifier,
                                              const xcb_key_press_event_t& event) {
    // A release before this press may still be unread on our own connection.
    events_.catchUp();
    if (heldKeys_.press(event.detail, event.time, Order::byTime) == Press::repeated)
        return;
    watchReleases(Releases::watched);
    if (!isDown(event.detail))
        release(event.detail, event.time);
    deliver(identifier);
}

void X11HotkeyService::release(xcb_keycode_t keycode, xcb_timestamp_t time) {
    if (!heldKeys_.anyHeld())
        return;
    heldKeys_.release(keycode, time);
    if (!heldKeys_.anyHeld())
        watchReleases(Releases::ignored);
}

bool X11HotkeyService::isDown(xcb_keycode_t keycode) const {
    const XcbOwned<xcb_query_keymap_reply_t> keymap(
        xcb_query_keymap_reply(connection_->get(), xcb_query_keymap(connection_->get()), nullptr));
    return keymap && (keymap->keys[keycode / 8] & (1U << (keycode % 8)));
}

void X11HotkeyService::watchReleases(Releases releases) {
    constexpr std::uint32_t rawReleases = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
    const struct {
        xcb_input_event_mask_t header;
        std::uint32_t events;
    } mask{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, releases == Releases::watched ? rawReleases : 0U};
    xcb_input_xi_select_events(connection_->get(), connection_->root(), 1, &mask.header);
    xcb_flush(connection_->get());
}

void X11HotkeyService::deliver(HotkeyIdentifier identifier) {
    const PressedEvent event(identifier);
    // A handler may register, unregister or remove itself.
    const auto handlers = handlers_;
    for (const auto& [ref, handler] : handlers) {
        if (handler(&event) == hotkey_status::success)
            return;
    }
}

} // namespace glimmerly
