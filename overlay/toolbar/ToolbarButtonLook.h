#pragma once

namespace glimmerly {

/// A momentary button lights only while pressed, a toggle button stays lit until it is switched off.
enum class ToolbarButtonMode { momentary, toggle };

struct ToolbarButtonState {
    ToolbarButtonMode mode = ToolbarButtonMode::momentary;
    bool isOn = false;
    bool isHovered = false;
    bool isPressed = false;
};

/// What is seen of a button's state.
struct ToolbarButtonLook {
    double backgroundAlpha = 0; ///< 0 to 1
    double iconScale = 1;       ///< of the symbol's own size

    constexpr bool operator==(const ToolbarButtonLook&) const = default;
};

[[nodiscard]] ToolbarButtonLook lookForState(const ToolbarButtonState& state);

/// The look at `progress`, 0 to 1, of the way from `from` to `to`.
[[nodiscard]] ToolbarButtonLook lookBetween(const ToolbarButtonLook& from, const ToolbarButtonLook& to,
                                            double progress);

} // namespace glimmerly
