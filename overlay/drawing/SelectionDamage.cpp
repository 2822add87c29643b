#include "overlay/drawing/SelectionDamage.h"

#include "overlay/drawing/CanvasCoordinates.h"

namespace glimmerly {

namespace {

QRegion chromeRegion(const SelectionFigure& figure) {
    QRegion region = toQRect(figure.sizeTag.pill);
    for (const PixelRect& band : frameBands(figure))
        region += toQRect(band);
    for (const PixelRect& handle : figure.handles)
        region += toQRect(handle);
    return region;
}

QRegion tagRegion(const std::optional<Tag>& tag) {
    return tag ? QRegion(toQRect(tag->pill)) : QRegion();
}

} // namespace

QRegion damageBetween(const SelectionScene& before, const SelectionScene& after, PixelSize window) {
    if (before == after)
        return {};
    QRegion damage;
    if (before.positionTag != after.positionTag)
        damage = tagRegion(before.positionTag) + tagRegion(after.positionTag);
    if (before.selection == after.selection)
        return damage;
    if (!before.selection || !after.selection) // all that is not selected becomes dim or bright
        return QRect(0, 0, window.width, window.height);
    damage += QRegion(toQRect(before.selection->area)).xored(toQRect(after.selection->area));
    return damage + chromeRegion(*before.selection) + chromeRegion(*after.selection);
}

} // namespace glimmerly
