#include "platform/qt/PictureIconEngine.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmap>

namespace glimmerly {

void PictureIconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) {
    const qreal scale = painter->device()->devicePixelRatioF();
    QPixmap picture = scaledPixmap((QSizeF(rect.size()) * scale).toSize(), mode, state, scale);
    picture.setDevicePixelRatio(scale);
    painter->drawPixmap(rect.topLeft(), picture);
}

QPixmap PictureIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) {
    return scaledPixmap(size, mode, state, 1);
}

QPixmap PictureIconEngine::scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal scale) {
    if (size.isEmpty())
        return {};
    QImage picture = draw_(size, scale);
    const QColor color = tint_(mode);
    return QPixmap::fromImage(color.isValid() ? tinted(std::move(picture), color) : std::move(picture));
}

QList<QSize> PictureIconEngine::availableSizes(QIcon::Mode, QIcon::State) {
    // Whoever lists sizes sends or stores them all: the usual ones of panels and menus at scale 1, 1.5 and 2.
    return {{16, 16}, {22, 22}, {24, 24}, {32, 32}, {44, 44}, {48, 48}};
}

QIconEngine* PictureIconEngine::clone() const {
    return new PictureIconEngine(*this);
}

QIcon tintedTemplate(const QIcon& icon, PictureIconEngine::Tint tint) {
    if (icon.isNull())
        return {};
    auto draw = [icon](QSize pixels, qreal pixelsPerPoint) {
        const QSize points = (QSizeF(pixels) / pixelsPerPoint).toSize();
        return icon.pixmap(points, pixelsPerPoint).toImage();
    };
    return QIcon(new PictureIconEngine(std::move(draw), std::move(tint)));
}

QColor paletteTextColor(QIcon::Mode mode) {
    const QPalette palette = QGuiApplication::palette();
    switch (mode) {
    case QIcon::Disabled:
        return palette.color(QPalette::Disabled, QPalette::WindowText);
    case QIcon::Active: // in a menu, the item under the mouse
    case QIcon::Selected:
        return palette.color(QPalette::Active, QPalette::HighlightedText);
    case QIcon::Normal:
        break;
    }
    return palette.color(QPalette::Active, QPalette::WindowText);
}

} // namespace glimmerly
