#include "hotkeys/recorder/HotkeyRecorderButtonStyle.h"

#include "hotkeys/recorder/HotkeyRecorderStyle.h"
#include "ui/UiColors.h"

#include <QTransform>

#include <algorithm>

namespace glimmerly {

namespace {

/// A smooth corner begins this many radii before its vertex. It is one Bézier curve that comes as near to the
/// vertex as the arc of a circle does, which gives the place of its control points on the edges.
constexpr double cornerReach = 1.5;
constexpr double cornerControl = (8 * 0.29289321881345254 - cornerReach) / 3;

} // namespace

QPainterPath HotkeyRecorderButtonStyle::shape(const QRectF& frame, double radius) const {
    const double longest = std::min(frame.width(), frame.height() / 2);
    const double reach = std::min(cornerReach * radius, longest);
    const double control = std::max(cornerControl * radius, 0.0);
    const double width = frame.width();
    const double height = frame.height();
    QPainterPath path(QPointF(width, 0));
    path.lineTo(reach, 0);
    path.cubicTo(control, 0, 0, control, 0, reach);
    path.lineTo(0, height - reach);
    path.cubicTo(0, height - control, control, height, reach, height);
    path.lineTo(width, height);
    path.closeSubpath();
    if (segment == Segment::trailing)
        path = QTransform(-1, 0, 0, 1, width, 0).map(path);
    return path.translated(frame.topLeft());
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
