#include "overlay/OverlayCanvasView.h"

#include "capture/service/TargetScreen.h"
#include "diagnostics/GlimmerlyLog.h"
#include "overlay/CanvasCoordinates.h"
#include "overlay/OverlayCanvasSelectionExport.h"
#include "overlay/SelectionCursors.h"
#include "overlay/SelectionDamage.h"
#include "overlay/SelectionDrawing.h"
#include "overlay/TagDrawing.h"
#include "overlay/model/SelectionStyle.h"
#include "platform/Pasteboard.h"
#include "platform/qt/QtConversions.h"

#include <QEnterEvent>
#include <QMouseEvent>
#include <QPainter>

namespace glimmerly {

namespace {

CanvasPixelGrid makeGrid(const Rect& bounds, const OverlayCaptureBackingImage& backing,
                         const Screens& screens) {
    const Screen screen = targetScreen(screens).value_or(Screen{});
    const auto& picture = backing.backgroundImageExpanded;
    return {bounds, screen.backingScale, screen.nativeFrame.size(),
            picture ? imagePixelSize(*picture) : std::nullopt};
}

} // namespace

OverlayCanvasView::OverlayCanvasView(std::filesystem::path captureImageURL, Rect frame,
                                     OverlayCanvasServices services, QWidget* parent)
    : QWidget(parent), captureImageURL_(std::move(captureImageURL)), services_(services),
      bounds_{0, 0, frame.width, frame.height},
      backing_(OverlayCaptureBackingImage::load(captureImageURL_, frame.height, services.screens)),
      grid_(makeGrid(bounds_, backing_, services.screens)) {
    if (!backing_.backgroundImage || !backing_.backgroundImageExpanded)
        GlimmerlyLog::error(log_category::overlayCanvas, "Capture PNG could not be loaded for overlay canvas",
                            {{"capture", captureImageURL_.filename().string()}});
    if (backing_.backgroundImageExpanded)
        background_ = toQImage(backing_.backgroundImageExpanded->bitmap, Opacity::opaque);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setCursor(Qt::CrossCursor);
}

std::optional<Bitmap> OverlayCanvasView::croppedSelectionImage() const {
    return glimmerly::croppedSelectionImage({.selection = selection_.rect(),
                                             .image = backing_.backgroundImageExpanded
                                                          ? backing_.backgroundImageExpanded
                                                          : backing_.backgroundImage,
                                             .minimumSize = selectionStyle.selectionRectMinSize,
                                             .bounds = bounds_});
}

bool OverlayCanvasView::writeCroppedImageToPasteboard() {
    const auto image = croppedSelectionImage();
    if (!image)
        return false;
    const Size onePointPerPixel{static_cast<double>(image->width()), static_cast<double>(image->height())};
    if (services_.pasteboard.writeImage(*image, onePointPerPixel) != PasteboardOutcome::written) {
        GlimmerlyLog::error(log_category::overlayExport, "writeCroppedImageToPasteboard returned false");
        return false;
    }
    return true;
}

// Mouse: what each event does, in the order in which it does it

void OverlayCanvasView::mouseDown(Point p) {
    selection_.clearDrag();
    mouseMode_ = beginMouseMode(p);
    updatePositionTag(p);
    updateScene();
}

OverlayCanvasView::MouseMode OverlayCanvasView::beginMouseMode(Point p) {
    if (beginSelectionResize(p))
        return MouseMode::selectionResize;
    selection_.beginCreation(p);
    return MouseMode::selectionCreation;
}

bool OverlayCanvasView::beginSelectionResize(Point p) {
    const auto handle = selection_.handleAt(p);
    if (handle)
        selection_.beginResize(*handle);
    return handle.has_value();
}

void OverlayCanvasView::mouseDragged(Point p) {
    switch (mouseMode_) {
    case MouseMode::selectionResize:
        selection_.dragResize(p, bounds_);
        break;
    case MouseMode::selectionCreation:
        selection_.dragCreation(p);
        break;
    case MouseMode::nothing:
        break;
    }
    updateCursor(p);
    updatePositionTag(p);
    updateScene();
}

void OverlayCanvasView::mouseUp(Point p) {
    selection_.endDrag();
    selection_.discardIfTooSmall();
    mouseMode_ = MouseMode::nothing;
    updateCursor(p);
    updatePositionTag(p);
    updateScene();
}

void OverlayCanvasView::mouseMoved(Point p) {
    updatePositionTag(p);
    updateCursor(p);
    updateScene();
}

void OverlayCanvasView::updatePositionTag(Point p) {
    if (selection_.rect())
        lastCrosshairLocationForPositionTag_.reset();
    else
        lastCrosshairLocationForPositionTag_ = p;
}

void OverlayCanvasView::updateCursor(Point p) {
    const auto handle = selection_.handleAt(p);
    const Qt::CursorShape shape = handle ? cursorForSelectionHandle(*handle) : Qt::CrossCursor;
    if (cursor().shape() != shape)
        setCursor(shape);
}

void OverlayCanvasView::updateScene() {
    SelectionScene scene =
        makeSelectionScene(selection_, lastCrosshairLocationForPositionTag_, bounds_, grid_);
    update(widgetRegion(damageBetween(scene_, scene, grid_.window()), grid_.scale()));
    scene_ = std::move(scene);
}

void OverlayCanvasView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        mouseDown(canvasPoint(*event, grid_));
}

void OverlayCanvasView::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() & Qt::LeftButton)
        mouseDragged(canvasPoint(*event, grid_));
    else if (event->buttons() == Qt::NoButton)
        mouseMoved(canvasPoint(*event, grid_));
}

void OverlayCanvasView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        mouseUp(canvasPoint(*event, grid_));
}

void OverlayCanvasView::enterEvent(QEnterEvent* event) {
    mouseMoved(canvasPoint(*event, grid_));
}

void OverlayCanvasView::leaveEvent(QEvent*) {
    lastCrosshairLocationForPositionTag_.reset();
    updateScene();
}

void OverlayCanvasView::showEvent(QShowEvent*) {
    setFocus();
}

// Drawing, back to front

void OverlayCanvasView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const double deviceScale = painter.deviceTransform().m11();
    painter.scale(1 / deviceScale, 1 / deviceScale); // one unit is one pixel from here on
    drawBackground(painter);
    drawScene(painter);
}

void OverlayCanvasView::drawBackground(QPainter& painter) const {
    const QRect window(0, 0, grid_.window().width, grid_.window().height);
    const QRect picture = background_.isNull() ? QRect() : toQRect(grid_.picture());
    // A point more than the window: the widget's size is a whole number of points and may round it up.
    const int margin = grid_.pixels(1.0);
    for (const QRect& bare : QRegion(window.adjusted(0, 0, margin, margin)) - picture)
        painter.fillRect(bare, Qt::black);
    if (background_.isNull())
        return;
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(picture.topLeft(), background_);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void OverlayCanvasView::drawScene(QPainter& painter) const {
    if (scene_.selection) {
        dimOutsideSelection(painter, *scene_.selection);
        drawSelectionFrame(painter, *scene_.selection);
        drawTag(painter, scene_.selection->sizeTag, grid_.scale());
        drawSelectionHandles(painter, *scene_.selection);
    } else if (scene_.positionTag) {
        drawTag(painter, *scene_.positionTag, grid_.scale());
    }
}

} // namespace glimmerly
