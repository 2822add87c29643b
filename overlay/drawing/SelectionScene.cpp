#include "overlay/drawing/SelectionScene.h"

#include "overlay/drawing/TagFont.h"
#include "overlay/model/SelectionLayout.h"
#include "overlay/model/SelectionStyle.h"

#include <algorithm>
#include <cmath>

namespace glimmerly {

namespace {

/// The line around `area`: centred on its edge, the odd pixel outside, where it hides nothing of the
/// selection, and pushed inwards at the display's edges, where it would not be seen.
PixelRect frameAround(const PixelRect& area, int lineWidth, const PixelRect& display) {
    const int outside = (lineWidth + 1) / 2;
    const int left = std::max(area.x - outside, display.x);
    const int top = std::max(area.y - outside, display.y);
    const int right = std::min(area.maxX() + outside, display.maxX());
    const int bottom = std::min(area.maxY() + outside, display.maxY());
    return {left, top, right - left, bottom - top};
}

/// The side of a handle with its outline, even or odd like the frame's line so that it can sit centred on it.
int handleSide(int lineWidth, double scale) {
    const double side =
        2 * selectionStyle.selectionRectResizeHandleDrawRadius + selectionStyle.handleOutlineWidth;
    const int pixels = static_cast<int>(std::lround(side * scale));
    return pixels % 2 == lineWidth % 2 ? pixels : pixels - 1;
}

std::array<PixelRect, allSelectionHandles.size()> handlesOn(const PixelRect& frame, int lineWidth, int side) {
    // The middle of the line, which the handles sit on, as a rectangle of edges between pixels.
    const Rect line = Rect{static_cast<double>(frame.x), static_cast<double>(frame.y),
                           static_cast<double>(frame.width), static_cast<double>(frame.height)}
                          .insetBy(lineWidth / 2.0);
    std::array<PixelRect, allSelectionHandles.size()> handles;
    std::ranges::transform(allSelectionHandles, handles.begin(), [&](SelectionHandle handle) {
        const Point centre = handlePoint(handle, line);
        const double yDown = line.minY() + line.maxY() - centre.y;
        return PixelRect{static_cast<int>(std::floor(centre.x - side / 2.0)),
                         static_cast<int>(std::floor(yDown - side / 2.0)), side, side};
    });
    return handles;
}

SelectionFigure makeFigure(const Rect& selection, const Rect& bounds, const CanvasPixelGrid& grid) {
    SelectionFigure figure;
    figure.area = grid.pixels(selection);
    for (const Rect& band : dimBands(selection, bounds))
        figure.dimBands.push_back(grid.pixels(band));
    figure.frameWidth = grid.pixels(selectionStyle.frameWidth);
    figure.frame = frameAround(figure.area, figure.frameWidth, grid.display());
    figure.handleOutlineWidth = grid.pixels(selectionStyle.handleOutlineWidth);
    figure.handles = handlesOn(figure.frame, figure.frameWidth, handleSide(figure.frameWidth, grid.scale()));
    const std::string text = sizeTagText(selection);
    figure.sizeTag = {text, grid.pixels(sizeTagRect(selection, tagTextSize(text, grid.scale()), bounds))};
    return figure;
}

} // namespace

std::array<PixelRect, 4> frameBands(const SelectionFigure& figure) {
    const PixelRect& frame = figure.frame;
    const int horizontal = std::min(figure.frameWidth, frame.height);
    const int vertical = std::min(figure.frameWidth, frame.width);
    const int between = std::max(frame.height - 2 * horizontal, 0);
    return {PixelRect{frame.x, frame.y, frame.width, horizontal},
            PixelRect{frame.x, frame.maxY() - horizontal, frame.width, horizontal},
            PixelRect{frame.x, frame.y + horizontal, vertical, between},
            PixelRect{frame.maxX() - vertical, frame.y + horizontal, vertical, between}};
}

SelectionScene makeSelectionScene(const Selection& selection, const std::optional<Point>& crosshair,
                                  const Rect& bounds, const CanvasPixelGrid& grid) {
    SelectionScene scene;
    if (const auto visible = selection.visibleRect()) {
        scene.selection = makeFigure(*visible, bounds, grid);
    } else if (crosshair) {
        const std::string text = positionTagText(*crosshair);
        const Size textSize = tagTextSize(text, grid.scale());
        scene.positionTag = Tag{text, grid.pixels(positionTagRect(*crosshair, textSize, bounds))};
    }
    return scene;
}

} // namespace glimmerly
