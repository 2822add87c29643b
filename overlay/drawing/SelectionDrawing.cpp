#include "overlay/drawing/SelectionDrawing.h"

#include "overlay/drawing/CanvasCoordinates.h"
#include "overlay/model/SelectionStyle.h"

namespace glimmerly {

void dimOutsideSelection(const PixelSurface& surface, const SelectionFigure& figure) {
    for (const PixelRect& band : figure.dimBands)
        surface.fill(toQRect(band), selectionStyle.dimming);
}

void drawSelectionFrame(const PixelSurface& surface, const SelectionFigure& figure) {
    for (const PixelRect& band : frameBands(figure))
        surface.fill(toQRect(band), selectionStyle.frame);
}

void drawSelectionHandles(const PixelSurface& surface, const SelectionFigure& figure) {
    const int line = figure.handleOutlineWidth;
    for (const PixelRect& handle : figure.handles) {
        const QRect square = toQRect(handle);
        if (!surface.shows(square))
            continue;
        const QRect inside = square.adjusted(line, line, -line, -line);
        const int overFill = line / 2; // the line runs along the fill's edge, half over it
        surface.fill(inside.adjusted(-overFill, -overFill, overFill, overFill), selectionStyle.handleFill);
        for (const QRect& side : QRegion(square) - inside)
            surface.fill(side, selectionStyle.handleOutline);
    }
}

} // namespace glimmerly
