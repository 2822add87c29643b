#include "ui/UiShapes.h"

#include "ui/DevicePixels.h"
#include "ui/UiColors.h"
#include "ui/UiStyle.h"
#include "ui/UiText.h"

#include <algorithm>

namespace glimmerly {

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
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors.controlBackground);
    painter.drawRoundedRect(shape, radius, radius);
    painter.setPen(QPen(colors.separator, line));
    painter.setBrush(Qt::NoBrush);
    const double inset = line / 2;
    painter.drawRoundedRect(shape.adjusted(inset, inset, -inset, -inset), radius - inset, radius - inset);
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
