#include "hotkeys/recorder/HotkeyRecorderButtonStyle.h"

#include "hotkeys/recorder/HotkeyRecorderStyle.h"
#include "ui/UiColors.h"
#include "ui/UiShapes.h"

namespace glimmerly {

QPainterPath HotkeyRecorderButtonStyle::shape(const QRectF& frame, double radius) const {
    return continuousCorners(frame, radius,
                             segment == Segment::leading ? RoundedCorners::left : RoundedCorners::right);
}

QColor HotkeyRecorderButtonStyle::fill(const UiColors& colors, bool isPressed) const {
    const bool looksPressed = isPressed != isHighlighted;
    QColor color = looksPressed ? colors.tertiaryFill : colors.quaternaryFill;
    const double opacity =
        looksPressed ? hotkey_recorder_style::pressedFillOpacity : hotkey_recorder_style::idleFillOpacity;
    color.setAlphaF(color.alphaF() * static_cast<float>(opacity));
    return color;
}

} // namespace glimmerly
