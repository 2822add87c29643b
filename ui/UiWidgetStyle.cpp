#include "ui/TooltipStyle.h"

#include "ui/DevicePixels.h"
#include "ui/UiColors.h"
#include "ui/UiStyle.h"

#include <QPainter>
#include <QStyleOption>

namespace glimmerly {

void TooltipStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const {
    if (element != PE_PanelTipLabel || widget == nullptr) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    const DevicePixels device(*painter);
    const QRect panel = device.alignedPixels(option->rect).toRect();
    const int line = static_cast<int>(device.lineWidth(ui_style::hairline));
    painter->fillRect(panel, option->palette.toolTipBase());
    for (const QRect& side : QRegion(panel) - panel.adjusted(line, line, -line, -line))
        painter->fillRect(side, uiColors(*widget).tertiaryFill);
}

int TooltipStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    return metric == PM_ToolTipLabelFrameWidth ? ui_style::tooltipPadding
                                               : QProxyStyle::pixelMetric(metric, option, widget);
}

} // namespace glimmerly
