#include "overlay/toolbar/ToolbarGrabHandleView.h"

#include "overlay/drawing/QtColor.h"
#include "overlay/toolbar/ToolbarStyle.h"
#include "ui/DevicePixels.h"

#include <QMouseEvent>

namespace glimmerly {

namespace style = toolbar_style;

ToolbarGrabHandleView::ToolbarGrabHandleView(QWidget* parent) : QWidget(parent) {
    setFixedSize(style::grabHandleWidth, style::grabHandleHeight);
    setFocusPolicy(Qt::NoFocus);
    setMouseTracking(true);
    setPalette(toQColor(style::barColor));
    setAutoFillBackground(true);
    setAccessibleName(QStringLiteral("Move toolbar"));
}

void ToolbarGrabHandleView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    lastLocationInWindow_ = event->scenePosition();
    setDragging(true, event->scenePosition());
}

void ToolbarGrabHandleView::mouseMoveEvent(QMouseEvent* event) {
    if (!lastLocationInWindow_) {
        event->ignore(); // a mere hover, which the toolbar's cursor follows
        return;
    }
    const QPointF delta = event->scenePosition() - *lastLocationInWindow_;
    lastLocationInWindow_ = event->scenePosition();
    if (onDragDelta)
        onDragDelta(delta.x(), -delta.y());
    if (onSuggestToolbarCursorRefresh)
        onSuggestToolbarCursorRefresh(event->scenePosition());
}

void ToolbarGrabHandleView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    lastLocationInWindow_.reset();
    setDragging(false, event->scenePosition());
}

void ToolbarGrabHandleView::setDragging(bool isDragging, QPointF locationInWindow) {
    isDragging_ = isDragging;
    update();
    if (onDragStateChanged)
        onDragStateChanged(isDragging);
    if (onSuggestToolbarCursorRefresh)
        onSuggestToolbarCursorRefresh(locationInWindow);
}

void ToolbarGrabHandleView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const DevicePixels device(painter);
    painter.setBrush(toQColor(style::grabDotColor));

    const double columnHeight = style::grabDotDiameter + style::grabDotPitch * (style::grabDotCount - 1);
    const double left = width() / 2.0 - style::grabDotDiameter / 2;
    const double top = (height() - columnHeight) / 2;
    for (int dot = 0; dot < style::grabDotCount; ++dot)
        painter.drawEllipse(device.pixels(
            {left, top + style::grabDotPitch * dot, style::grabDotDiameter, style::grabDotDiameter}));
}

} // namespace glimmerly
