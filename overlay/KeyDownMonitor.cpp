#include "overlay/KeyDownMonitor.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace glimmerly {

KeyDownMonitor::KeyDownMonitor(Handler handler) : handler_(std::move(handler)) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool KeyDownMonitor::eventFilter(QObject* receiver, QEvent* event) {
    // A press comes by once for the window and then for each widget it is offered to.
    if (event->type() != QEvent::KeyPress || !receiver->isWindowType())
        return false;
    const Handler handler = handler_; // survives this object's end
    return handler(static_cast<const QKeyEvent&>(*event), *receiver) == Verdict::swallow;
}

} // namespace glimmerly
