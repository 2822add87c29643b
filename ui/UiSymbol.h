#pragma once

#include "ui/SymbolImage.h"
#include "ui/UiText.h"

#include <QWidget>

#include <optional>
#include <string_view>

namespace glimmerly {

/// Paints `symbol` in `color`, centred in `area` points of what `painter` paints on.
void paintSymbol(QPainter& painter, const SymbolImage& symbol, const QRect& area, const QColor& color);

/// A symbol beside text that says the same: assistive technology is not told of it.
class UiSymbol : public QWidget {
public:
    /// As large as text of `pointSize`. A name that no symbol has leaves the place empty.
    UiSymbol(std::string_view name, double pointSize, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<SymbolImage> symbol_;
};

} // namespace glimmerly
