#include "overlay/text/OverlayGrowingTextAnnotationView.h"

#include "overlay/text/OverlayTextView.h"
#include "overlay/text/TextAnnotationHost.h"
#include "ui/DevicePixels.h"

#include <QAbstractTextDocumentLayout>
#include <QCoreApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace glimmerly {

namespace {

constexpr double borderWidth = 2;
constexpr double borderCornerRadius = 6;
constexpr double textInset = 6;
constexpr double minimumTextWidth = 40;
constexpr QColor frameColor(128, 128, 128);

constexpr double padding = borderWidth + textInset;

} // namespace

OverlayGrowingTextAnnotationView::OverlayGrowingTextAnnotationView(Point anchor, Uuid id, const QColor& color,
                                                                   const QFont& font, const QString& text,
                                                                   TextAnnotationHost& host, QWidget* canvas)
    : QWidget(canvas), anchorInCanvas_(anchor), host_(&host), annotationColor_(color),
      textView_(new OverlayTextView(host, font, color, text, this)), annotationID_(id) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    setFocusProxy(textView_); // or a press on the frame would give the canvas the focus
    textView_->onFocusChanged = [this](bool focused) { textViewFocusChanged(focused); };
    connect(textView_, &QTextEdit::textChanged, this, [this] {
        layoutTextView();
        if (onTextChanged)
            onTextChanged(textView_->string());
    });
    // What an input method composes changes the size without changing the text.
    connect(textView_->document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
            [this] { layoutTextView(); });
    layoutTextView();
}

void OverlayGrowingTextAnnotationView::layoutTextView() {
    const Size text = textView_->measuredText();
    const double width = std::max(minimumTextWidth, text.width);
    const double height = std::max(textView_->lineHeight(), text.height);
    const QRectF firstLine = textView_->firstLineRect().translated(padding, padding);

    const Size size{width + 2 * padding, height + 2 * padding};
    // y up: the view's bottom lies its height, less the first line's middle, below the anchor.
    frameInCanvas_ = {anchorInCanvas_.x - firstLine.left(),
                      anchorInCanvas_.y - (size.height - firstLine.center().y()), size.width, size.height};

    const int inset = static_cast<int>(padding);
    textView_->setGeometry(inset, inset, static_cast<int>(std::ceil(width)) + OverlayTextView::caretRoom,
                           static_cast<int>(std::ceil(height)));
    setGeometry(host_->widgetGeometry(frameInCanvas_));
    update();
}

void OverlayGrowingTextAnnotationView::setCanvasSelected(bool selected) {
    if (isCanvasSelected_ == selected)
        return;
    isCanvasSelected_ = selected;
    update();
}

void OverlayGrowingTextAnnotationView::setAnchorInCanvas(Point anchor) {
    if (anchorInCanvas_ == anchor)
        return;
    anchorInCanvas_ = anchor;
    layoutTextView();
}

void OverlayGrowingTextAnnotationView::setString(const QString& text) {
    if (textView_->string() == text)
        return;
    {
        const QSignalBlocker notTyped(textView_);
        textView_->setString(text);
    }
    layoutTextView();
}

void OverlayGrowingTextAnnotationView::setAnnotationColor(const QColor& color) {
    if (annotationColor_ == color)
        return;
    annotationColor_ = color;
    textView_->setColor(color);
    layoutTextView();
}

void OverlayGrowingTextAnnotationView::setVisiblePart(std::optional<Rect> part) {
    const bool isOther = visiblePart_ != part;
    visiblePart_ = part;
    setVisible(part.has_value());
    if (!part)
        return;
    const QRectF own(part->minX() - frameInCanvas_.minX(), frameInCanvas_.maxY() - part->maxY(), part->width,
                     part->height);
    textView_->setPaintClip(own.translated(-textView_->x(), -textView_->y()));
    if (isOther) // or every text would be painted for each step of the selection
        update();
}

void OverlayGrowingTextAnnotationView::paintEvent(QPaintEvent*) {
    if (!isCanvasSelected_ && !isEditing_)
        return;
    QPainter painter(this);
    if (visiblePart_) {
        painter.setClipRect(QRectF(visiblePart_->minX() - frameInCanvas_.minX(),
                                   frameInCanvas_.maxY() - visiblePart_->maxY(), visiblePart_->width,
                                   visiblePart_->height));
    }
    painter.setRenderHint(QPainter::Antialiasing);
    const DevicePixels device(painter);
    const double line = device.lineWidth(borderWidth);
    const double inset = line / 2;
    const double radius = borderCornerRadius * device.scale();
    painter.setPen(QPen(frameColor, line));
    painter.drawRoundedRect(device.alignedPixels({0, 0, frameInCanvas_.width, frameInCanvas_.height})
                                .adjusted(inset, inset, -inset, -inset),
                            radius, radius);
}

bool OverlayGrowingTextAnnotationView::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        return forwardToEditor(static_cast<const QMouseEvent&>(*event));
    default:
        return QWidget::event(event);
    }
}

/// The space between frame and text belongs to the editor as well: a press there means the nearest letter.
bool OverlayGrowingTextAnnotationView::forwardToEditor(const QMouseEvent& event) {
    QWidget* const target = textView_->viewport();
    const QPointF place = target->mapFrom(this, event.position());
    const QPointF nearest(std::clamp(place.x(), 0.0, target->width() - 1.0),
                          std::clamp(place.y(), 0.0, target->height() - 1.0));
    QMouseEvent forwarded(event.type(), nearest, event.scenePosition(), event.globalPosition(),
                          event.button(), event.buttons(), event.modifiers());
    QCoreApplication::sendEvent(target, &forwarded);
    return true;
}

void OverlayGrowingTextAnnotationView::textViewFocusChanged(bool focused) {
    isEditing_ = focused;
    setAttribute(Qt::WA_TransparentForMouseEvents, !focused);
    setCursor(Qt::IBeamCursor); // seen only while the mouse is
    update();
    if (onFocusChanged)
        onFocusChanged(focused);
}

} // namespace glimmerly
