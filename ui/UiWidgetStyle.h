#pragma once

#include <QProxyStyle>

namespace glimmerly {

/// The desktop's style, with what Qt's own widgets show between the program's in the program's look:
/// tooltips, which have a hard line in the text's colour otherwise, and scroll bars, which are a handle over
/// whatever is behind it.
class UiWidgetStyle : public QProxyStyle {
public:
    using QProxyStyle::polish;

    void polish(QWidget* widget) override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                       SubControl part, const QWidget* widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                  const QWidget* widget) const override;
};

} // namespace glimmerly
