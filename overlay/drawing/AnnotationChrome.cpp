#include "overlay/drawing/AnnotationChrome.h"

#include "overlay/drawing/AnnotationTiles.h"
#include "overlay/drawing/QtColor.h"
#include "overlay/model/AnnotationStyle.h"

#include <QPainter>
#include <QPainterPathStroker>

#include <algorithm>
#include <array>
#include <cmath>

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

void drawHandle(const PixelSurface& surface, QPointF centre, double scale) {
    const double reach = annotationStyle.handleRadius * scale + 1; // with its line
    if (!surface.shows(QRectF(centre, centre).adjusted(-reach, -reach, reach, reach).toAlignedRect()))
        return;
    const double radius = annotationStyle.handleRadius * scale;
    surface.painter().setPen(QPen(toQColor(style.handleBorder), style.handleBorderWidth * scale));
    surface.painter().setBrush(toQColor(style.handleFill));
    surface.painter().drawEllipse(centre, radius, radius);
}

/// The part from `from` to `to`, in pixels along it, of the side that begins at `corner`.
void drawDash(const PixelSurface& surface, QPointF corner, QPointF direction, double from, double to,
              double width) {
    const QPointF across(std::abs(direction.y()) * width / 2, std::abs(direction.x()) * width / 2);
    const QRectF line = QRectF(corner + direction * from, corner + direction * to).normalized();
    const QRectF dash(line.topLeft() - across, line.bottomRight() + across);
    if (surface.shows(dash.toAlignedRect()))
        surface.painter().fillRect(dash, toQColor(style.outline));
}

/// Dashes around `rect`, in pixels, from its top left corner on clockwise. One by one, as Qt makes a shape of
/// all of them at once, also of those that are not to be seen.
void drawDashes(const PixelSurface& surface, const QRectF& rect, double scale) {
    const double width = style.outlineWidth * scale;
    const double period = (style.dash + style.dashGap) * scale;
    const std::array corners{rect.topLeft(), rect.topRight(), rect.bottomRight(), rect.bottomLeft()};
    constexpr std::array directions{QPointF(1, 0), QPointF(0, 1), QPointF(-1, 0), QPointF(0, -1)};
    double passed = 0; // of the whole way round
    for (std::size_t side = 0; side < corners.size(); ++side) {
        const double length = side % 2 == 0 ? rect.width() : rect.height();
        const auto first = static_cast<int>(passed / period);
        const auto afterLast = static_cast<int>(std::ceil((passed + length) / period));
        for (int dash = first; dash < afterLast; ++dash) {
            const double start = dash * period - passed;
            // A dash bends around a corner, whose square belongs to the side before it.
            const double end = start + style.dash * scale;
            const double from = start < 0 ? width / 2 : start;
            const double to = end > length ? length + width / 2 : end;
            if (to > from)
                drawDash(surface, corners[side], directions[side], from, to, width);
        }
        passed += length;
    }
}

void drawChrome(const PixelSurface& surface, const RectangleShape& rectangle, const PixelMapping& mapping) {
    const Rect rect = rectangle.rect.standardized();
    drawDashes(surface, mapping(rect.insetBy(-style.outlineGap)), mapping.scale);
    for (const SelectionHandle handle : allSelectionHandles)
        drawHandle(surface, mapping(handlePoint(handle, rect)), mapping.scale);
}

QPainterPath outlineOf(const QPainterPath& line, double width) {
    QPainterPathStroker stroker;
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    stroker.setWidth(width);
    return stroker.createStroke(line);
}

void drawChrome(const PixelSurface& surface, const ArrowShape& arrow, const PixelMapping& mapping) {
    QPainterPath shaft(mapping(arrow.start));
    shaft.lineTo(mapping(arrow.end));
    QPainterPath lines = shaft;
    lines.addPath(arrowHeadStrokes(arrow, mapping));
    // Beside the arrow and not over it, which would take its colour away.
    const QPainterPath halo = outlineOf(shaft, style.haloWidth * mapping.scale)
                                  .subtracted(outlineOf(lines, annotationLineWidth(mapping)));
    surface.painter().fillPath(halo, toQColor(style.halo));
    drawHandle(surface, mapping(arrow.start), mapping.scale);
    drawHandle(surface, mapping(arrow.end), mapping.scale);
}

void drawChrome(const PixelSurface&, const TextLabel&, const PixelMapping&) {}

} // namespace

void drawSelectedAnnotationChrome(const PixelSurface& surface, const AnnotationScene& scene,
                                  const PixelMapping& mapping) {
    const OverlayAnnotation* selected = selectedAnnotation(scene);
    const auto isShown = [&](const QRect& tile) { return surface.shows(tile); };
    if (!selected || !std::ranges::any_of(chromeTiles(*selected, mapping), isShown))
        return;
    surface.painter().save();
    surface.painter().setRenderHint(QPainter::Antialiasing);
    std::visit([&](const auto& shape) { drawChrome(surface, shape, mapping); }, selected->kind);
    surface.painter().restore();
}

} // namespace glimmerly
