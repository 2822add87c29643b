#include "overlay/OverlayKeyWindow.h"

#include "overlay/canvas/OverlayCanvasView.h"
#include "overlay/text/OverlayTextView.h"
#include "platform/VirtualKeyCodes.h"

#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace glimmerly {

namespace {

bool isCommandZ(const QKeyEvent& event) {
    if (!(event.modifiers() & (Qt::MetaModifier | Qt::ControlModifier)))
        return false;
    constexpr int lastLatinKey = 0xff;
    if (event.key() <= lastLatinKey)
        return event.key() == Qt::Key_Z;
    // A layout without Latin letters has no Z: there it is the key that prints one elsewhere.
    return virtualKeyCodeFromNativeScanCode(event.nativeScanCode()) == virtual_key::ansiZ;
}

} // namespace

OverlayKeyWindow::OverlayKeyWindow() {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setMouseTracking(true);
}

OverlayKeyWindow::~OverlayKeyWindow() = default;

void OverlayKeyWindow::setContentView(std::unique_ptr<OverlayCanvasView> canvas) {
    if (contentView_)
        contentView_->deleteLater();
    contentView_ = canvas.release();
    if (!contentView_)
        return;
    contentView_->setParent(this);
    contentView_->setGeometry(rect());
    contentView_->show();
}

OverlayCanvasView* OverlayKeyWindow::contentView() const {
    return contentView_;
}

bool OverlayKeyWindow::firstResponderIsTextView() const {
    const QWidget* responder = focusWidget();
    return qobject_cast<const QTextEdit*>(responder) || qobject_cast<const QPlainTextEdit*>(responder);
}

KeyDownMonitor::Verdict OverlayKeyWindow::performKeyEquivalent(const QKeyEvent& event) {
    if (!isCommandZ(event) || !contentView_)
        return KeyDownMonitor::Verdict::pass;
    const bool isRedo = event.modifiers().testFlag(Qt::ShiftModifier);
    bool isHandled = false;
    if (auto* editor = dynamic_cast<OverlayTextView*>(focusWidget())) {
        using Step = OverlayTextView::HistoryStep;
        isHandled = editor->performTypingStep(isRedo ? Step::redo : Step::undo);
    } else {
        isHandled = isRedo ? contentView_->performRedo() : contentView_->performUndo();
    }
    return isHandled ? KeyDownMonitor::Verdict::swallow : KeyDownMonitor::Verdict::pass;
}

// Qt 6.4 rounds a mouse position to whole points before it looks for the child there: at a scale of 2 or more
// the last column and row of pixels round to a point beyond the canvas, and their events end here.
bool OverlayKeyWindow::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        return contentView_ && static_cast<QObject*>(contentView_)->event(event);
    default:
        return QWidget::event(event);
    }
}

void OverlayKeyWindow::resizeEvent(QResizeEvent*) {
    if (contentView_)
        contentView_->setGeometry(rect());
}

} // namespace glimmerly
