#include "platform/tray/PanelColors.h"

#include <QGuiApplication>
#include <QPalette>
#include <QPixmap>
#include <QScreen>

namespace glimmerly {

namespace {

const QColor lightText(255, 255, 255);
const QColor darkText(36, 36, 36);
const QColor neutralText(128, 128, 128);

/// Plasma paints its panels and menus with the colour scheme that Qt's palette comes from.
bool hostUsesThePalette() {
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(':').contains("KDE");
}

QColor paletteText() {
    return QGuiApplication::palette().color(QPalette::Active, QPalette::WindowText);
}

} // namespace

QColor textColorOn(const QColor& background) {
    return qGray(background.rgb()) > 140 ? darkText : lightText;
}

QColor screenColorAt(QPoint globalPosition) {
    QScreen* screen = QGuiApplication::screenAt(globalPosition);
    if (!screen)
        return {};
    const QPoint position = globalPosition - screen->geometry().topLeft();
    const QImage pixel = screen->grabWindow(0, position.x(), position.y(), 1, 1).toImage();
    return pixel.isNull() ? QColor() : pixel.pixelColor(0, 0);
}

QColor hostPanelTextColor() {
    return hostUsesThePalette() ? paletteText() : lightText;
}

QColor hostMenuTextColor() {
    return hostUsesThePalette() ? paletteText() : neutralText;
}

} // namespace glimmerly
