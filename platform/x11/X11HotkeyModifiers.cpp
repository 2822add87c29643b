#include "platform/x11/X11HotkeyModifiers.h"

#include "platform/HotkeyService.h"
#include "platform/x11/X11Connection.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <span>

namespace glimmerly {

namespace {

constexpr std::uint16_t fixedBits = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_LOCK | XCB_MOD_MASK_CONTROL;

/// The symbols of every key, as many a key as `symbolsPerKey`.
struct KeyboardMapping {
    XcbOwned<xcb_get_keyboard_mapping_reply_t> reply;
    xcb_keycode_t firstKeycode;

    [[nodiscard]] std::span<const xcb_keysym_t> symbols(xcb_keycode_t keycode) const {
        const auto all =
            std::span(xcb_get_keyboard_mapping_keysyms(reply.get()),
                      static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(reply.get())));
        const std::size_t perKey = reply->keysyms_per_keycode;
        const std::size_t start = (keycode - std::size_t{firstKeycode}) * perKey;
        if (keycode < firstKeycode || start + perKey > all.size())
            return {};
        return all.subspan(start, perKey);
    }
};

void addKey(X11HotkeyModifiers& modifiers, std::uint16_t bit, std::span<const xcb_keysym_t> symbols) {
    for (const xcb_keysym_t symbol : symbols) {
        switch (symbol) {
        case XKB_KEY_Alt_L:
        case XKB_KEY_Alt_R:
            modifiers.option = modifiers.option ? modifiers.option : bit;
            break;
        case XKB_KEY_Super_L:
        case XKB_KEY_Super_R:
            modifiers.command = modifiers.command ? modifiers.command : bit;
            break;
        case XKB_KEY_Num_Lock:
        case XKB_KEY_Scroll_Lock:
        case XKB_KEY_Mode_switch:
        case XKB_KEY_ISO_Level3_Lock:
        case XKB_KEY_ISO_Level5_Lock:
            modifiers.ignored |= bit;
            break;
        default:
            break;
        }
    }
}

} // namespace

X11HotkeyModifiers X11HotkeyModifiers::read(xcb_connection_t* connection) {
    const xcb_setup_t* setup = xcb_get_setup(connection);
    const auto modifierCookie = xcb_get_modifier_mapping(connection);
    const auto keyboardCookie =
        xcb_get_keyboard_mapping(connection, setup->min_keycode,
                                 static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1));
    const XcbOwned<xcb_get_modifier_mapping_reply_t> modifierMap(
        xcb_get_modifier_mapping_reply(connection, modifierCookie, nullptr));
    const KeyboardMapping keyboard{XcbOwned<xcb_get_keyboard_mapping_reply_t>(
                                       xcb_get_keyboard_mapping_reply(connection, keyboardCookie, nullptr)),
                                   setup->min_keycode};

    X11HotkeyModifiers modifiers;
    if (!modifierMap || !keyboard.reply)
        return modifiers;
    const xcb_keycode_t* keycodes = xcb_get_modifier_mapping_keycodes(modifierMap.get());
    const int keysPerModifier = modifierMap->keycodes_per_modifier;
    for (int i = 0; i < 8 * keysPerModifier; ++i) {
        const auto bit = static_cast<std::uint16_t>(1U << (i / keysPerModifier));
        if (keycodes[i] != 0 && !(bit & fixedBits))
            addKey(modifiers, bit, keyboard.symbols(keycodes[i]));
    }
    modifiers.ignored &= static_cast<std::uint16_t>(~(modifiers.option | modifiers.command));
    return modifiers;
}

std::optional<std::uint16_t> X11HotkeyModifiers::required(std::uint32_t carbonFlags) const {
    const struct {
        std::uint32_t flag;
        std::uint16_t bit;
    } keys[] = {{hotkey_modifier::control, XCB_MOD_MASK_CONTROL},
                {hotkey_modifier::shift, XCB_MOD_MASK_SHIFT},
                {hotkey_modifier::option, option},
                {hotkey_modifier::command, command}};
    std::uint16_t bits = 0;
    for (const auto& key : keys) {
        if (!(carbonFlags & key.flag))
            continue;
        if (key.bit == 0)
            return {};
        bits |= key.bit;
    }
    return bits;
}

std::vector<std::uint16_t> X11HotkeyModifiers::variants(std::uint16_t required) const {
    std::vector<std::uint16_t> all;
    // Counts through the subsets of the ignored bits, ending with the empty one.
    std::uint16_t subset = ignored;
    do {
        all.push_back(required | subset);
        subset = static_cast<std::uint16_t>((subset - 1) & ignored);
    } while (subset != ignored);
    return all;
}

} // namespace glimmerly
