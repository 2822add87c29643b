#include "platform/x11/X11KeyboardSymbols.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <bitset>

namespace glimmerly {

namespace {

struct DeadKey {
    xkb_keysym_t symbol;
    const char* accent;
};

/// What is printed on the keys that only add an accent to the next one.
constexpr DeadKey deadKeys[] = {
    {XKB_KEY_dead_grave, "`"},       {XKB_KEY_dead_acute, "´"},     {XKB_KEY_dead_circumflex, "^"},
    {XKB_KEY_dead_tilde, "~"},       {XKB_KEY_dead_macron, "¯"},    {XKB_KEY_dead_breve, "˘"},
    {XKB_KEY_dead_abovedot, "˙"},    {XKB_KEY_dead_diaeresis, "¨"}, {XKB_KEY_dead_abovering, "°"},
    {XKB_KEY_dead_doubleacute, "˝"}, {XKB_KEY_dead_caron, "ˇ"},     {XKB_KEY_dead_cedilla, "¸"},
    {XKB_KEY_dead_ogonek, "˛"},      {XKB_KEY_dead_iota, "ͺ"},      {XKB_KEY_dead_stroke, "/"},
    {XKB_KEY_dead_belowdot, "."},    {XKB_KEY_dead_currency, "¤"},
};

xkb_keysym_t symbolAt(xkb_keymap& keymap, xkb_keycode_t keycode, xkb_layout_index_t group,
                      xkb_level_index_t level) {
    const xkb_keysym_t* symbols = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(&keymap, keycode, group, level, &symbols);
    return count == 1 ? symbols[0] : XKB_KEY_NoSymbol;
}

/// Which level Shift chooses depends on the key's type: on some it is Alt or Control that has the second.
xkb_keysym_t symbolWithShift(xkb_keymap& keymap, xkb_keycode_t keycode, xkb_layout_index_t group) {
    const std::unique_ptr<xkb_state, XkbRelease> state(xkb_state_new(&keymap));
    const xkb_mod_mask_t shift = 1U << xkb_keymap_mod_get_index(&keymap, XKB_MOD_NAME_SHIFT);
    xkb_state_update_mask(state.get(), shift, 0, 0, 0, 0, group);
    return xkb_state_key_get_one_sym(state.get(), keycode);
}

std::string textOf(xkb_keysym_t symbol) {
    if (const auto* dead = std::ranges::find(deadKeys, symbol, &DeadKey::symbol); dead != std::end(deadKeys))
        return dead->accent;
    char utf8[8] = {};
    xkb_keysym_to_utf8(symbol, utf8, sizeof utf8);
    return utf8;
}

bool writesAscii(xkb_keymap& keymap, xkb_layout_index_t group) {
    std::bitset<26> letters;
    for (auto key = xkb_keymap_min_keycode(&keymap); key <= xkb_keymap_max_keycode(&keymap); ++key) {
        const xkb_keysym_t symbol = symbolAt(keymap, key, group, 0);
        if (symbol >= XKB_KEY_a && symbol <= XKB_KEY_z)
            letters.set(symbol - XKB_KEY_a);
    }
    // Some Latin alphabets do without a few of the letters; other scripts have hardly any.
    return letters.count() > letters.size() / 2;
}

} // namespace

XkbContext makeXkbContext() {
    return XkbContext(xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES));
}

XkbKeymap compileKeymap(xkb_context& context, const char* layouts) {
    const xkb_rule_names names{"evdev", "pc105", layouts, nullptr, nullptr};
    return XkbKeymap(xkb_keymap_new_from_names(&context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
}

X11KeyboardSymbols::X11KeyboardSymbols(XkbKeymap keymap, xkb_layout_index_t currentGroup)
    : keymap_(std::move(keymap)), group_(currentGroup) {
    if (keymap_ && writesAscii(*keymap_, group_))
        return;
    const xkb_layout_index_t groups = keymap_ ? xkb_keymap_num_layouts(keymap_.get()) : 0;
    for (group_ = 0; group_ < groups; ++group_) {
        if (writesAscii(*keymap_, group_))
            return;
    }
    group_ = 0;
    if (const XkbContext context = makeXkbContext())
        keymap_ = compileKeymap(*context, "us");
}

std::optional<std::string> X11KeyboardSymbols::text(std::uint32_t keycode, KeyLevel level) const {
    if (!keymap_)
        return {};
    const xkb_keysym_t symbol = level == KeyLevel::plain ? symbolAt(*keymap_, keycode, group_, 0)
                                                         : symbolWithShift(*keymap_, keycode, group_);
    std::string text = textOf(symbol);
    // Without Num Lock the keypad moves the cursor; its digits are printed all the same.
    if (text.empty() && symbol >= XKB_KEY_KP_Space && symbol <= XKB_KEY_KP_Equal)
        text = textOf(symbolAt(*keymap_, keycode, group_, 1));
    if (text.empty())
        return {};
    return text;
}

} // namespace glimmerly
