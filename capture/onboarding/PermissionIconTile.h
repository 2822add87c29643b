#pragma once

#include "ui/SymbolImage.h"

#include <QWidget>

#include <optional>

namespace glimmerly {

/// The picture of screen recording on a tile in the accent colour. Its shadow needs room around the tile,
/// which is `shadowMargin` points of the widget on every side.
class PermissionIconTile : public QWidget {
public:
    static constexpr int side = 76;
    static constexpr int shadowMargin = 20;

    explicit PermissionIconTile(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintShadow(QPainter& painter, const QRect& tilePixels, double scale) const;
    void paintSymbol(QPainter& painter, const QRect& tilePixels, double scale) const;

    std::optional<SymbolImage> symbol_;
};

} // namespace glimmerly
