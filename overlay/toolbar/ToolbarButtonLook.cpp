#include "overlay/toolbar/ToolbarButtonLook.h"

#include <cmath>

namespace glimmerly {
namespace {

struct BackgroundAlphas {
    double idle;
    double hovered;
    double pressed;
};
constexpr BackgroundAlphas darkAlphas{0.0, 0.10, 0.18};
constexpr BackgroundAlphas litAlphas{0.20, 0.25, 0.30};
constexpr double pressedIconScale = 0.92;

} // namespace

ToolbarButtonLook lookForState(const ToolbarButtonState& state) {
    const bool isLit = state.mode == ToolbarButtonMode::toggle && state.isOn;
    const BackgroundAlphas& alphas = isLit ? litAlphas : darkAlphas;
    if (state.isPressed)
        return {alphas.pressed, pressedIconScale};
    return {state.isHovered ? alphas.hovered : alphas.idle, 1};
}

ToolbarButtonLook lookBetween(const ToolbarButtonLook& from, const ToolbarButtonLook& to, double progress) {
    return {std::lerp(from.backgroundAlpha, to.backgroundAlpha, progress),
            std::lerp(from.iconScale, to.iconScale, progress)};
}

} // namespace glimmerly
