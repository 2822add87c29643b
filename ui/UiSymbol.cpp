#include "ui/UiSymbol.h"

#include "ui/UiColors.h"

#include <QPainter>

namespace glimmerly {

void paintSymbol(QPainter& painter, const SymbolImage& symbol, const QRect& area, const QColor& color) {
    const QSize size = symbol.size().toSize();
    const double scale = painter.device()->devicePixelRatioF();
    QImage picture = tinted(symbol.rendered((QSizeF(size) * scale).toSize(), scale), color);
    picture.setDevicePixelRatio(scale);
    painter.drawImage(area.topLeft() +
                          QPoint((area.width() - size.width()) / 2, (area.height() - size.height()) / 2),
                      picture);
}

UiSymbol::UiSymbol(std::string_view name, double pointSize, QWidget* parent)
    : QWidget(parent),
      symbol_(SymbolImage::symbol(name, {.pointSize = pointSize, .weight = SymbolWeight::regular})) {
    if (symbol_)
        setFixedSize(symbol_->size().toSize());
}

void UiSymbol::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (symbol_)
        paintSymbol(painter, *symbol_, rect(), uiColors(*this).secondary);
}

} // namespace glimmerly
