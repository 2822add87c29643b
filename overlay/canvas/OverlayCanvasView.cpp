#include "overlay/canvas/OverlayCanvasView.h"

#include "capture/service/TargetScreen.h"
#include "diagnostics/GlimmerlyLog.h"
#include "overlay/drawing/AnnotationChrome.h"
#include "overlay/drawing/AnnotationTiles.h"
#include "overlay/drawing/CanvasCoordinates.h"
#include "overlay/drawing/SelectionDamage.h"
#include "overlay/drawing/SelectionDrawing.h"
#include "overlay/drawing/TagDrawing.h"
#include "overlay/export/OverlayCanvasSelectionExport.h"
#include "overlay/model/AnnotationEditing.h"
#include "overlay/model/SelectionStyle.h"
#include "overlay/text/OverlayGrowingTextAnnotationView.h"
#include "overlay/toolbar/OverlayToolbarView.h"
#include "platform/Pasteboard.h"
#include "ui/QtConversions.h"

#include <QPaintEvent>
#include <QPainter>

#include <cmath>

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
      grid_(makeGrid(bounds_, backing_, services.screens)), windowPixels_{grid_.point({0, 0}), grid_.scale()},
      textViews_(*this, [this](const Rect& rect) { return widgetRect(rect); }) {
    if (!backing_.backgroundImage || !backing_.backgroundImageExpanded)
        GlimmerlyLog::error(log_category::overlayCanvas, "Capture PNG could not be loaded for overlay canvas",
                            {{"capture", captureImageURL_.filename().string()}});
    if (backing_.backgroundImageExpanded)
        background_ = toQImage(backing_.backgroundImageExpanded->bitmap);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setFocusPolicy(Qt::NoFocus); // or Qt would give it the focus for a press on any button of the toolbar
    setMouseTracking(true);
    setCursor(Qt::CrossCursor);
    connectTextViews();
    installToolbar();
}

OverlayCanvasView::~OverlayCanvasView() = default;

void OverlayCanvasView::showEvent(QShowEvent*) {
    setFocus();
}

void OverlayCanvasView::resizeEvent(QResizeEvent*) {
    layoutToolbar();
}

// Export

std::optional<Bitmap> OverlayCanvasView::croppedSelectionImage() const {
    const auto drawTextOf = [this](QPainter& painter, const OverlayAnnotation& annotation,
                                   const PixelMapping& mapping) { drawText(painter, annotation, mapping); };
    return glimmerly::croppedSelectionImage({.selection = selection_.rect(),
                                             .image = backing_.backgroundImageExpanded
                                                          ? backing_.backgroundImageExpanded
                                                          : backing_.backgroundImage,
                                             .annotations = annotations_.appliedList(),
                                             .drawText = drawTextOf,
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

void OverlayCanvasView::drawText(QPainter& painter, const OverlayAnnotation& annotation,
                                 const PixelMapping& mapping) const {
    auto* view = textViews_.view(annotation.id);
    if (!view || view->isHidden() || view->width() < 1 || view->height() < 1)
        return;
    // From where the widget really stands, which is on whole points.
    const Point topLeft{windowPixels_.topLeft.x + view->x(), windowPixels_.topLeft.y - view->y()};
    painter.save();
    painter.translate(mapping(topLeft));
    painter.scale(mapping.scale, mapping.scale);
    view->render(&painter, {}, {}, QWidget::DrawChildren);
    painter.restore();
}

QRect OverlayCanvasView::widgetRect(const Rect& frame) const {
    const auto whole = [](double length) { return static_cast<int>(std::lround(length)); };
    return {whole(frame.minX() - windowPixels_.topLeft.x), whole(windowPixels_.topLeft.y - frame.maxY()),
            static_cast<int>(std::ceil(frame.width)), static_cast<int>(std::ceil(frame.height))};
}

// Drawing, back to front

void OverlayCanvasView::updateScene() {
    SelectionScene scene =
        makeSelectionScene(selection_, lastCrosshairLocationForPositionTag_, bounds_, grid_);
    const auto& draft = annotations_.draft();
    AnnotationScene annotationScene{annotations_.appliedList(),
                                    draft ? annotationFromDraft(*draft) : std::nullopt,
                                    annotations_.selectedID()};
    const QRegion damage = damageBetween(scene_, scene, grid_.window()) +
                           damageBetween(annotationScene_, annotationScene, windowPixels_);
    update(widgetRegion(damage, grid_.scale()));
    if (scene_.selection != scene.selection)
        textViews_.clipTextViewsToSelection(selection_.visibleRect());
    scene_ = std::move(scene);
    annotationScene_ = std::move(annotationScene);
}

void OverlayCanvasView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const double deviceScale = painter.deviceTransform().m11();
    painter.scale(1 / deviceScale, 1 / deviceScale); // one unit is one pixel from here on
    const QTransform toPixels = QTransform::fromScale(deviceScale, deviceScale);
    QRegion exposed;
    for (const QRect& rect : event->region())
        exposed += toPixels.mapRect(QRectF(rect)).toAlignedRect();
    // Rectangle by rectangle, as Qt copies pixels faster within one than within any other region.
    for (const QRect& rect : exposed) {
        painter.setClipRect(rect);
        drawBackground({painter, rect});
    }
    painter.setClipping(false);
    drawScene({painter, exposed});
}

void OverlayCanvasView::drawBackground(const PixelSurface& surface) const {
    QPainter& painter = surface.painter();
    const QRect window(0, 0, grid_.window().width, grid_.window().height);
    const QRect picture = background_.isNull() ? QRect() : toQRect(grid_.picture());
    // A point more than the window: the widget's size is a whole number of points and may round it up.
    const int margin = grid_.pixels(1.0);
    for (const QRect& bare : QRegion(window.adjusted(0, 0, margin, margin)) - picture)
        surface.fill(bare, Color::white(0));
    if (!background_.isNull()) {
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.drawImage(picture.topLeft(), background_);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    }
    if (scene_.selection)
        dimOutsideSelection(surface, *scene_.selection);
}

void OverlayCanvasView::drawScene(const PixelSurface& surface) const {
    if (scene_.selection) {
        drawAnnotations(surface, annotationScene_, windowPixels_, toQRect(scene_.selection->area));
        drawSelectedAnnotationChrome(surface, annotationScene_, windowPixels_);
        drawSelectionFrame(surface, *scene_.selection);
        drawTag(surface, scene_.selection->sizeTag, grid_.scale());
        drawSelectionHandles(surface, *scene_.selection);
    } else if (scene_.positionTag) {
        drawTag(surface, *scene_.positionTag, grid_.scale());
    }
}

} // namespace glimmerly
