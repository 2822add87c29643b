#include "overlay/drawing/AnnotationTiles.h"

#include "overlay/drawing/AnnotationChrome.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace glimmerly {

namespace {

constexpr double antialiasing = 1; ///< how far, in pixels, a soft edge reaches beyond its line

/// A few rectangles that together cover the line from `a` to `b` with `reach` pixels around it: one for a
/// straight one, a staircase for a slanting one, whose bounding box would be mostly empty.
void addLine(std::vector<QRect>& tiles, QPointF a, QPointF b, double reach) {
    constexpr double tileLength = 96;
    constexpr int mostTiles = 48;
    const QPointF whole = b - a;
    const double narrow = std::min(std::abs(whole.x()), std::abs(whole.y()));
    const int count = std::clamp(static_cast<int>(std::ceil(narrow / tileLength)), 1, mostTiles);
    const double margin = reach + antialiasing;
    for (int i = 0; i < count; ++i) {
        const QRectF piece = QRectF(a + whole * i / count, a + whole * (i + 1) / count).normalized();
        tiles.push_back(piece.adjusted(-margin, -margin, margin, margin).toAlignedRect());
    }
}

void addOutline(std::vector<QRect>& tiles, const QRectF& rect, double reach) {
    const std::array corners{rect.topLeft(), rect.topRight(), rect.bottomRight(), rect.bottomLeft()};
    for (std::size_t i = 0; i < corners.size(); ++i)
        addLine(tiles, corners[i], corners[(i + 1) % corners.size()], reach);
}

std::vector<QRect> tilesOf(const OverlayAnnotation& annotation, const PixelMapping& mapping, double lineReach,
                           double endReach) {
    std::vector<QRect> tiles;
    if (const auto* rectangle = std::get_if<RectangleShape>(&annotation.kind)) {
        addOutline(tiles, mapping(rectangle->rect), lineReach);
    } else if (const auto* arrow = std::get_if<ArrowShape>(&annotation.kind)) {
        addLine(tiles, mapping(arrow->start), mapping(arrow->end), lineReach);
        addLine(tiles, mapping(arrow->end), mapping(arrow->end), endReach);
        addLine(tiles, mapping(arrow->start), mapping(arrow->start), endReach);
    }
    return tiles;
}

void addAll(QRegion& region, const std::vector<QRect>& tiles) {
    for (const QRect& tile : tiles)
        region += tile;
}

void addChrome(QRegion& region, const AnnotationScene& scene, const PixelMapping& mapping) {
    if (const OverlayAnnotation* selected = selectedAnnotation(scene))
        addAll(region, chromeTiles(*selected, mapping));
}

} // namespace

std::vector<QRect> shapeTiles(const OverlayAnnotation& annotation, const PixelMapping& mapping) {
    const double halfLine = annotationLineWidth(mapping) / 2 + 1; // a crisp line may stand half a pixel off
    return tilesOf(annotation, mapping, halfLine, annotationHeadLength(mapping) + halfLine);
}

std::vector<QRect> chromeTiles(const OverlayAnnotation& annotation, const PixelMapping& mapping) {
    const double reach = annotationChromeReach * mapping.scale;
    return tilesOf(annotation, mapping, reach, reach);
}

QRegion damageBetween(const AnnotationScene& before, const AnnotationScene& after,
                      const PixelMapping& mapping) {
    QRegion damage;
    if (before == after)
        return damage;
    const auto common = std::min(before.annotations.size(), after.annotations.size());
    for (std::size_t i = 0; i < std::max(before.annotations.size(), after.annotations.size()); ++i) {
        if (i < common && before.annotations[i] == after.annotations[i])
            continue;
        for (const auto* scene : {&before, &after}) {
            if (i < scene->annotations.size())
                addAll(damage, shapeTiles(scene->annotations[i], mapping));
        }
    }
    for (const auto* scene : {&before, &after}) {
        if (scene->draft)
            addAll(damage, shapeTiles(*scene->draft, mapping));
        addChrome(damage, *scene, mapping);
    }
    return damage;
}

} // namespace glimmerly
