#pragma once

#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace glimmerly {

struct XkbRelease {
    void operator()(xkb_context* context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
    void operator()(xkb_state* state) const { xkb_state_unref(state); }
};
using XkbContext = std::unique_ptr<xkb_context, XkbRelease>;
using XkbKeymap = std::unique_ptr<xkb_keymap, XkbRelease>;

/// What keymaps are made in; the environment's own default layout does not reach into it.
[[nodiscard]] XkbContext makeXkbContext();
/// The keymap of the layouts `layouts` ("us", "fr,ru"); nullptr when the system does not describe them.
[[nodiscard]] XkbKeymap compileKeymap(xkb_context& context, const char* layouts);

enum class KeyLevel { plain, shifted };

/// What the keys of a keymap print, in the group of it that can write ASCII.
class X11KeyboardSymbols {
public:
    /// Reads from `keymap`, which may be nullptr: from its group `currentGroup` if that one can write ASCII,
    /// else from the first that can, else from a US keyboard.
    X11KeyboardSymbols(XkbKeymap keymap, xkb_layout_index_t currentGroup);

    /// What the key with X keycode `keycode` prints on that level, as UTF-8; a dead key prints its accent.
    [[nodiscard]] std::optional<std::string> text(std::uint32_t keycode,
                                                  KeyLevel level = KeyLevel::plain) const;

private:
    XkbKeymap keymap_;
    xkb_layout_index_t group_ = 0;
};

} // namespace glimmerly
