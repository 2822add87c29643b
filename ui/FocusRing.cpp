#include "ui/FocusRing.h"

#include "ui/UiStyle.h"

#include <QPainter>
#include <QWidget>

namespace glimmerly {

FocusVisibility::FocusVisibility(QWidget& widget) : QObject(&widget), widget_(widget) {
    widget.installEventFilter(this);
}

bool FocusVisibility::isVisible() const {
    return cameByKeyboard_ && widget_.hasFocus();
}

bool FocusVisibility::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::FocusIn && widget_.hasFocus()) { // QDialog (6.4) sends one before that
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        // Coming back to a window shows again what was seen before.
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            cameByKeyboard_ = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                              reason == Qt::ShortcutFocusReason;
    } else if (event->type() == QEvent::KeyPress && !cameByKeyboard_) {
        cameByKeyboard_ = true;
        widget_.update();
    }
    return false;
}

void paintFocusRing(QPainter& painter, const QRectF& shape, double radius, double unitsPerPoint,
                    const QColor& color) {
    const double width = ui_style::focusRingWidth * unitsPerPoint;
    const double inset = width / 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(shape.adjusted(inset, inset, -inset, -inset), radius - inset, radius - inset);
    painter.restore();
}

} // namespace glimmerly
