#include "platform/qt/QtAlerts.h"

#include "platform/qt/AlertBox.h"
#include "ui/WindowPlacement.h"

#include <QApplication>

namespace glimmerly {

int QtAlerts::runModal(const Alert& alert) {
    AlertBox box(alert);
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    box.adjustSize();
    centerOnDisplayUnderMouse(box);
    box.show();
    box.raise();
    box.activateWindow();
    const std::stop_callback atStop(
        alert.stop, [&box] { QMetaObject::invokeMethod(&box, "reject", Qt::QueuedConnection); });
    box.exec();

    return box.choice();
}

void QtAlerts::beep() {
    QApplication::beep();
}

} // namespace glimmerly
