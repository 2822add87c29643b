#pragma once

#include "ui/SymbolImage.h"

#include <QIconEngine>

#include <functional>

namespace glimmerly {

/// An icon that is drawn anew for each size and scale and, as a template, for each colour.
class PictureIconEngine : public QIconEngine {
public:
    /// The picture in `pixels` pixels of which `pixelsPerPoint` make a point; the colour does not matter in a
    /// template.
    using Draw = std::function<QImage(QSize pixels, qreal pixelsPerPoint)>;
    /// A template's colour in a mode; an invalid one leaves the picture as it is.
    using Tint = std::function<QColor(QIcon::Mode mode)>;

    PictureIconEngine(Draw draw, Tint tint) : draw_(std::move(draw)), tint_(std::move(tint)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override;
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override;
    [[nodiscard]] QIconEngine* clone() const override;

private:
    Draw draw_;
    Tint tint_;
};

/// `icon` as a template in colours of `tint`; null for a null icon.
[[nodiscard]] QIcon tintedTemplate(const QIcon& icon, PictureIconEngine::Tint tint);

/// The colour of text in menus and dialogs, as the palette has it in that mode.
[[nodiscard]] QColor paletteTextColor(QIcon::Mode mode);

} // namespace glimmerly
