#include "ui/WindowPlacement.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace glimmerly {

namespace {

constexpr int titleBarHeight = 40; // more than any window manager's

/// Empty when there is no display at all.
QRect areaOf(const QScreen* screen) {
    if (!screen)
        screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}

void center(QWidget& window, const QRect& area) {
    if (!area.isEmpty())
        window.move(area.center() - QPoint(window.width() / 2, window.height() / 2));
}

} // namespace

void centerOnDisplayUnderMouse(QWidget& window) {
    center(window, areaOf(nullptr));
}

void fitOnDisplay(QWidget& window, QSize wanted, QSize least) {
    const bool wasPlaced = window.testAttribute(Qt::WA_Moved);
    const QScreen* own = wasPlaced ? QGuiApplication::screenAt(window.geometry().center()) : nullptr;
    const QRect area = areaOf(own);
    const QSize before = window.size();
    window.setFixedSize(wanted.boundedTo({area.width(), area.height() - titleBarHeight}).expandedTo(least));
    if (!own || window.size() != before)
        center(window, area);
}

} // namespace glimmerly
