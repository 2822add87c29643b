#include "capture/onboarding/PermissionIconTile.h"

#include "ui/DevicePixels.h"
#include "ui/ShadowImage.h"
#include "ui/UiColors.h"
#include "ui/UiShapes.h"

#include <QLinearGradient>

namespace glimmerly {

namespace {

constexpr double cornerRadius = 18;
constexpr double shadowOpacity = 0.12;
constexpr double shadowRadius = 8; // the standard deviation of its blur
constexpr double shadowDrop = 4;
constexpr SymbolConfiguration symbolConfiguration{.pointSize = 34, .weight = SymbolWeight::medium};
constexpr float symbolOpacity = 0.95F;

/// The gradient's opacities, from the top-left to the bottom-right corner.
struct TileOpacity {
    float start;
    float end;
};
constexpr TileOpacity lightOpacity{0.85F, 0.55F};
constexpr TileOpacity darkOpacity{0.55F, 0.35F};

QBrush tileFill(const QRect& tile, const UiColors& colors) {
    const bool isDark = &colors == &uiColors(ColorScheme::dark);
    const TileOpacity opacity = isDark ? darkOpacity : lightOpacity;
    QLinearGradient gradient(tile.topLeft(), tile.bottomRight());
    QColor color = colors.accent;
    color.setAlphaF(opacity.start);
    gradient.setColorAt(0, color);
    color.setAlphaF(opacity.end);
    gradient.setColorAt(1, color);
    return gradient;
}

} // namespace

PermissionIconTile::PermissionIconTile(QWidget* parent)
    : QWidget(parent),
      symbol_(SymbolImage::symbol("rectangle.inset.filled.and.person.filled", symbolConfiguration)) {
    setFixedSize(side + 2 * shadowMargin, side + 2 * shadowMargin);
}

void PermissionIconTile::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const DevicePixels device(painter);
    const QRect tile = device.alignedPixels(QRectF(shadowMargin, shadowMargin, side, side)).toRect();
    const UiColors& colors = uiColors(*this);
    paintShadow(painter, tile, device.scale());
    // The tile is translucent, and a shadow is not to be seen through what casts it.
    const double radius = cornerRadius * device.scale();
    const QPainterPath shape = continuousCorners(tile, radius);
    painter.fillPath(shape, colors.windowBackground);
    painter.fillPath(shape, tileFill(tile, colors));
    paintSymbol(painter, tile, device.scale());
}

void PermissionIconTile::paintShadow(QPainter& painter, const QRect& tilePixels, double scale) const {
    const int margin = qRound(shadowMargin * scale);
    const QRect caster(margin, margin + qRound(shadowDrop * scale), tilePixels.width(), tilePixels.height());
    const QSize size(tilePixels.width() + 2 * margin, tilePixels.height() + 2 * margin);
    painter.drawImage(tilePixels.topLeft() - QPoint(margin, margin),
                      shadowImage(size, caster,
                                  {.cornerRadius = cornerRadius * scale,
                                   .deviation = shadowRadius * scale,
                                   .opacity = shadowOpacity}));
}

void PermissionIconTile::paintSymbol(QPainter& painter, const QRect& tilePixels, double scale) const {
    if (!symbol_)
        return;
    QColor white(Qt::white);
    white.setAlphaF(symbolOpacity);
    painter.drawImage(tilePixels.topLeft(), tinted(symbol_->rendered(tilePixels.size(), scale), white));
}

} // namespace glimmerly
