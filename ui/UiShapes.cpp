#include "ui/UiShapes.h"

#include "ui/DevicePixels.h"
#include "ui/UiColors.h"
#include "ui/UiStyle.h"
#include "ui/UiText.h"

#include <algorithm>

namespace glimmerly {

QPainterPath continuousCorners(const QRectF& frame, double radius, RoundedCorners corners) {
    // A smooth corner begins this many radii before its vertex, where there is room. It is one Bézier curve
    // that comes as near to the vertex as the arc of a circle does, which gives the place of its control
    // points.
    constexpr double reachInRadii = 1.5;
    constexpr double arcToVertex = 0.29289321881345254; // 1 - cos 45°, in radii along either edge
    const double across = corners == RoundedCorners::all ? frame.width() / 2 : frame.width();
    const double reach = std::min({reachInRadii * radius, across, frame.height() / 2});
    const double control = std::max((8 * arcToVertex * radius - reach) / 3, 0.0);
    const bool left = corners != RoundedCorners::right;
    const bool right = corners != RoundedCorners::left;
    const struct {
        QPointF vertex, before, after; // the last two lead from the vertex along its edges, clockwise
        bool isRounded;
    } all[] = {{frame.topRight(), {-1, 0}, {0, 1}, right},
               {frame.bottomRight(), {0, -1}, {-1, 0}, right},
               {frame.bottomLeft(), {1, 0}, {0, -1}, left},
               {frame.topLeft(), {0, 1}, {1, 0}, left}};
    QPainterPath path(QPointF(frame.center().x(), frame.top()));
    for (const auto& [vertex, before, after, isRounded] : all) {
        path.lineTo(isRounded ? vertex + before * reach : vertex);
        if (isRounded)
            path.cubicTo(vertex + before * control, vertex + after * control, vertex + after * reach);
    }
    path.closeSubpath();
    return path;
}

Card::Card(int padding, QWidget* parent) : QWidget(parent) {
    setContentsMargins(padding, padding, padding, padding);
}

void Card::paintEvent(QPaintEvent*) {
    const UiColors& colors = uiColors(*this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const DevicePixels device(painter);
    const double line = device.lineWidth(ui_style::hairline);
    const double radius = ui_style::cardCornerRadius * device.scale();
    const QRectF shape = device.alignedPixels(rect());
    painter.fillPath(continuousCorners(shape, radius), colors.controlBackground);
    const double inset = line / 2;
    painter.strokePath(continuousCorners(shape.adjusted(inset, inset, -inset, -inset), radius - inset),
                       QPen(colors.separator, line));
}

Divider::Divider(QWidget* parent) : QWidget(parent) {
    setFixedHeight(static_cast<int>(ui_style::hairline));
}

void Divider::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const DevicePixels device(painter);
    QRectF line = device.alignedPixels(rect());
    line.setHeight(device.lineWidth(ui_style::hairline));
    painter.fillRect(line, uiColors(*this).separator);
}

NumberBadge::NumberBadge(int number, QWidget* parent) : QWidget(parent), number_(number) {
    setFont(uiFont({.size = TextSize::caption, .weight = QFont::Bold}));
    const int diameter = std::max(ui_style::badgeDiameter, fontMetrics().height());
    setFixedSize(diameter, diameter);
}

int NumberBadge::baseline() const {
    return (height() - fontMetrics().height()) / 2 + fontMetrics().ascent();
}

void NumberBadge::paintEvent(QPaintEvent*) {
    const UiColors& colors = uiColors(*this);
    QColor fill = colors.quaternaryFill;
    fill.setAlphaF(fill.alphaF() * static_cast<float>(ui_style::badgeFillOpacity));
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawEllipse(rect());
    painter.setPen(colors.secondary);
    painter.drawText(rect(), Qt::AlignCenter, QString::number(number_));
}

} // namespace glimmerly
