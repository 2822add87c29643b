#include "overlay/drawing/TagDrawing.h"

#include "overlay/drawing/CanvasCoordinates.h"
#include "overlay/drawing/QtColor.h"
#include "overlay/drawing/TagFont.h"
#include "overlay/model/SelectionStyle.h"
#include "ui/QtConversions.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace glimmerly {

namespace {

void drawPill(QPainter& painter, const PixelRect& pill, double scale) {
    const double radius = tagStyle.cornerRadius * scale;
    const double lineWidth = std::max(1.0, std::round(tagStyle.outlineWidth * scale));
    const double inset = lineWidth / 2; // the line inside the pill, on whole pixels
    const QRectF area = toQRect(pill);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(toQColor(tagStyle.fill));
    painter.drawRoundedRect(area, radius, radius);
    painter.setPen(QPen(toQColor(tagStyle.outline), lineWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(area.adjusted(inset, inset, -inset, -inset), radius - inset, radius - inset);
}

void drawText(QPainter& painter, const Tag& tag, double scale) {
    const QFontMetricsF metrics(tagFont());
    const double textHeight = tagTextSize(tag.text, scale).height * scale;
    const double left = tag.pill.x + std::round(tagStyle.horizontalPadding * scale);
    const double top = tag.pill.y + (tag.pill.height - textHeight) / 2;
    const double baseline = std::round(top + metrics.ascent() * scale);
    painter.translate(left, baseline);
    painter.scale(scale, scale);
    painter.setFont(tagFont());
    painter.setPen(toQColor(tagStyle.text));
    painter.drawText(QPointF(0, 0), toQString(tag.text));
}

} // namespace

void drawTag(const PixelSurface& surface, const Tag& tag, double scale) {
    if (!surface.shows(toQRect(tag.pill)))
        return;
    QPainter& painter = surface.painter();
    painter.save();
    drawPill(painter, tag.pill, scale);
    drawText(painter, tag, scale);
    painter.restore();
}

} // namespace glimmerly
