#pragma once

#include <QProxyStyle>

namespace glimmerly {

/// The desktop's style with tooltips in the program's own look. Qt's have a hard line in the text's colour.
class TooltipStyle : public QProxyStyle {
public:
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
};

} // namespace glimmerly
