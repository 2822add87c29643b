#include "overlay/SelectionDrawing.h"

#include "overlay/CanvasCoordinates.h"
#include "overlay/QtColor.h"
#include "overlay/model/SelectionStyle.h"

#include <QPainter>

namespace glimmerly {

void dimOutsideSelection(QPainter& painter, const SelectionFigure& figure) {
    for (const PixelRect& band : figure.dimBands)
        painter.fillRect(toQRect(band), toQColor(selectionStyle.dimming));
}

void drawSelectionFrame(QPainter& painter, const SelectionFigure& figure) {
    for (const PixelRect& band : frameBands(figure))
        painter.fillRect(toQRect(band), toQColor(selectionStyle.frame));
}

void drawSelectionHandles(QPainter& painter, const SelectionFigure& figure) {
    const int line = figure.handleOutlineWidth;
    for (const PixelRect& handle : figure.handles) {
        const QRect square = toQRect(handle);
        const QRect inside = square.adjusted(line, line, -line, -line);
        const int overFill = line / 2; // the line runs along the fill's edge, half over it
        painter.fillRect(inside.adjusted(-overFill, -overFill, overFill, overFill),
                         toQColor(selectionStyle.handleFill));
        for (const QRect& side : QRegion(square) - inside)
            painter.fillRect(side, toQColor(selectionStyle.handleOutline));
    }
}

} // namespace glimmerly
