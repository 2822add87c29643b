#include "ui/WindowPlacement.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace glimmerly {

namespace {

constexpr int titleBarHeight = 40; // more than any window manager's

/// Empty when there is no display at all.
QRect areaUnderMouse() {
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}

} // namespace

void centerOnDisplayUnderMouse(QWidget& window) {
    const QRect area = areaUnderMouse();
    if (!area.isEmpty())
        window.move(area.center() - QPoint(window.width() / 2, window.height() / 2));
}

QSize largestContentOnDisplayUnderMouse() {
    const QSize area = areaUnderMouse().size();
    return {area.width(), area.height() - titleBarHeight};
}

} // namespace glimmerly
