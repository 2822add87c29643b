#include "overlay/OverlayCanvasView.h"

#include "platform/Pasteboard.h"

#include <QPaintEvent>
#include <QPainter>

namespace glimmerly {

OverlayCanvasView::OverlayCanvasView(std::filesystem::path captureImageURL, Rect frame,
                                     OverlayCanvasServices services, QWidget* parent)
    : QWidget(parent), captureImageURL_(std::move(captureImageURL)), services_(services),
      bounds_{0, 0, frame.width, frame.height} {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
}

std::optional<Bitmap> OverlayCanvasView::croppedSelectionImage() const {
    return std::nullopt;
}

bool OverlayCanvasView::writeCroppedImageToPasteboard() {
    const auto image = croppedSelectionImage();
    if (!image)
        return false;
    const Size onePointPerPixel{static_cast<double>(image->width()), static_cast<double>(image->height())};
    return services_.pasteboard.writeImage(*image, onePointPerPixel) == PasteboardOutcome::written;
}

void OverlayCanvasView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.fillRect(event->rect(), Qt::black);
}

} // namespace glimmerly
