#include "overlay/OverlayKeyWindow.h"

#include "overlay/OverlayCanvasView.h"

#include <QPlainTextEdit>
#include <QTextEdit>

namespace glimmerly {

OverlayKeyWindow::OverlayKeyWindow() {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setMouseTracking(true);
}

void OverlayKeyWindow::setContentView(OverlayCanvasView* canvas) {
    canvas->setParent(this);
    canvas->setGeometry(rect());
    contentView_ = canvas;
}

OverlayCanvasView* OverlayKeyWindow::contentView() const {
    return contentView_;
}

bool OverlayKeyWindow::firstResponderIsTextView() const {
    const QWidget* responder = focusWidget();
    return qobject_cast<const QTextEdit*>(responder) || qobject_cast<const QPlainTextEdit*>(responder);
}

void OverlayKeyWindow::resizeEvent(QResizeEvent*) {
    if (contentView_)
        contentView_->setGeometry(rect());
}

} // namespace glimmerly
