#include "overlay/AnnotationChrome.h"

#include "overlay/QtColor.h"
#include "overlay/model/AnnotationStyle.h"

#include <QPainter>

namespace glimmerly {

namespace {

/// In points.
struct ChromeStyle {
    double outlineGap = 3;
    double outlineWidth = 1.5;
    double dash = 4;
    double dashGap = 3;
    Color outline = Color::white(1, 0.9);
    double haloWidth = annotationStyle.lineWidth + 6;
    Color halo = Color::white(1, 0.3);
    double handleBorderWidth = 1;
    Color handleFill = Color::white(1);
    Color handleBorder = Color::white(0, 0.5);
};
constexpr ChromeStyle style;

static_assert(annotationChromeReach >= annotationStyle.handleRadius + style.handleBorderWidth / 2);
static_assert(annotationChromeReach >= style.outlineGap + style.outlineWidth / 2);
static_assert(annotationChromeReach >= style.haloWidth / 2);

void drawHandle(QPainter& painter, QPointF centre, const PixelMapping& mapping) {
    const double radius = annotationStyle.handleRadius * mapping.scale;
    painter.setPen(QPen(toQColor(style.handleBorder), style.handleBorderWidth * mapping.scale));
    painter.setBrush(toQColor(style.handleFill));
    painter.drawEllipse(centre, radius, radius);
}

void drawChrome(QPainter& painter, const RectangleShape& rectangle, const PixelMapping& mapping) {
    const Rect rect = rectangle.rect.standardized();
    QPen dashes(toQColor(style.outline), style.outlineWidth * mapping.scale);
    dashes.setCapStyle(Qt::FlatCap);
    dashes.setJoinStyle(Qt::MiterJoin);
    dashes.setDashPattern({style.dash / style.outlineWidth, style.dashGap / style.outlineWidth}); // in widths
    painter.setPen(dashes);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(mapping(rect.insetBy(-style.outlineGap)));
    for (const SelectionHandle handle : allSelectionHandles)
        drawHandle(painter, mapping(handlePoint(handle, rect)), mapping);
}

void drawChrome(QPainter& painter, const ArrowShape& arrow, const PixelMapping& mapping) {
    painter.setPen(QPen(toQColor(style.halo), style.haloWidth * mapping.scale, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(mapping(arrow.start), mapping(arrow.end));
    drawHandle(painter, mapping(arrow.start), mapping);
    drawHandle(painter, mapping(arrow.end), mapping);
}

void drawChrome(QPainter&, const TextLabel&, const PixelMapping&) {}

} // namespace

void drawSelectedAnnotationChrome(QPainter& painter, const AnnotationScene& scene,
                                  const PixelMapping& mapping) {
    const OverlayAnnotation* selected = selectedAnnotation(scene);
    if (!selected)
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    std::visit([&](const auto& shape) { drawChrome(painter, shape, mapping); }, selected->kind);
    painter.restore();
}

} // namespace glimmerly
