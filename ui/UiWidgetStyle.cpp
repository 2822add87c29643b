#include "ui/UiWidgetStyle.h"

#include "ui/DevicePixels.h"
#include "ui/UiColors.h"
#include "ui/UiStyle.h"

#include <QPainter>
#include <QScrollBar>
#include <QStyleOption>

#include <algorithm>

namespace glimmerly {

namespace {

/// The part of a scroll bar that `part` names. There are no buttons at its ends.
QRect scrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part) {
    const bool isHorizontal = bar.orientation == Qt::Horizontal;
    const int length = isHorizontal ? bar.rect.width() : bar.rect.height();
    const int range = bar.maximum - bar.minimum + bar.pageStep;
    const int shown = range > 0 ? static_cast<int>(qint64{length} * bar.pageStep / range) : length;
    const int handle = std::clamp(shown, std::min(ui_style::scrollHandleMinimum, length), length);
    const int start = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                      length - handle, bar.upsideDown);
    const auto along = [&](int from, int to) {
        return isHorizontal ? QRect(bar.rect.left() + from, bar.rect.top(), to - from, bar.rect.height())
                            : QRect(bar.rect.left(), bar.rect.top() + from, bar.rect.width(), to - from);
    };
    switch (part) {
    case QStyle::SC_ScrollBarGroove:
        return bar.rect;
    case QStyle::SC_ScrollBarSlider:
        return along(start, start + handle);
    case QStyle::SC_ScrollBarSubPage:
        return along(0, start);
    case QStyle::SC_ScrollBarAddPage:
        return along(start + handle, length);
    default:
        return {};
    }
}

void paintScrollHandle(QPainter& painter, const QStyleOptionSlider& bar, const QWidget& widget) {
    const UiColors& colors = uiColors(widget);
    const bool isUsed = bar.activeSubControls.testFlag(QStyle::SC_ScrollBarSlider) &&
                        (bar.state & (QStyle::State_MouseOver | QStyle::State_Sunken)) != 0;
    constexpr int side = ui_style::scrollHandleInset;
    constexpr int end = ui_style::scrollHandleEndInset;
    const QRect part = scrollBarPart(bar, QStyle::SC_ScrollBarSlider);
    const QRect handle = bar.orientation == Qt::Horizontal ? part.adjusted(end, side, -end, -side)
                                                           : part.adjusted(side, end, -side, -end);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    {
        const DevicePixels device(painter);
        const QRectF shape = device.alignedPixels(handle);
        const double radius = std::min(shape.width(), shape.height()) / 2;
        painter.setPen(Qt::NoPen);
        painter.setBrush(isUsed ? colors.secondary : colors.strongFill);
        painter.drawRoundedRect(shape, radius, radius);
    }
    painter.restore();
}

} // namespace

void UiWidgetStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (qobject_cast<QScrollBar*>(widget)) {
        widget->setAttribute(Qt::WA_OpaquePaintEvent, false);
        widget->setAttribute(Qt::WA_Hover);
    }
}

void UiWidgetStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
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

void UiWidgetStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                       QPainter* painter, const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || bar == nullptr || widget == nullptr)
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    else if (bar->maximum > bar->minimum)
        paintScrollHandle(*painter, *bar, *widget);
}

QRect UiWidgetStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                    SubControl part, const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    return control == CC_ScrollBar && bar != nullptr
               ? scrollBarPart(*bar, part)
               : QProxyStyle::subControlRect(control, option, part, widget);
}

int UiWidgetStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_ToolTipLabelFrameWidth:
        return ui_style::tooltipPadding;
    case PM_ScrollBarExtent:
        return ui_style::scrollBarWidth;
    case PM_ScrollBarSliderMin:
        return ui_style::scrollHandleMinimum;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

} // namespace glimmerly
