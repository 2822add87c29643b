#include "overlay/drawing/PixelSurface.h"

#include "overlay/drawing/QtColor.h"

#include <QPainter>

#include <algorithm>

namespace glimmerly {

namespace {

// Qt 6.4 hands fills of 96 rows or more to threads. To wake them takes longer than to fill what is narrow.
constexpr int rowsByOneThread = 64;
constexpr int widthWorthThreads = 512;

} // namespace

void PixelSurface::fill(const QRect& rect, const Color& color) const {
    const QColor paint = toQColor(color);
    for (const QRect& piece : exposed_.intersected(rect)) {
        const int rows = piece.width() < widthWorthThreads ? rowsByOneThread : piece.height();
        for (int top = piece.top(); top <= piece.bottom(); top += rows)
            painter_.fillRect(piece.left(), top, piece.width(), std::min(rows, piece.bottom() + 1 - top),
                              paint);
    }
}

} // namespace glimmerly
