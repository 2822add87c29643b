#include "hotkeys/recorder/HotkeyRecorderSegment.h"

#include "hotkeys/recorder/HotkeyRecorderStyle.h"
#include "ui/DevicePixels.h"
#include "ui/FocusRing.h"
#include "ui/UiColors.h"
#include "ui/UiStyle.h"
#include "ui/UiText.h"

namespace glimmerly {

namespace style = hotkey_recorder_style;

HotkeyRecorderSegment::HotkeyRecorderSegment(HotkeyRecorderButtonStyle::Segment segment, QWidget* parent)
    : QAbstractButton(parent), style_{.segment = segment}, focus_(*new FocusVisibility(*this)) {
    setFocusPolicy(Qt::StrongFocus);
    setFont(uiFont(text_style::body));
}

void HotkeyRecorderSegment::setHighlighted(bool isHighlighted) {
    style_.isHighlighted = isHighlighted;
    update();
}

void HotkeyRecorderSegment::showText(const QString& text) {
    setText(text);
    setAccessibleName(text);
}

void HotkeyRecorderSegment::showSymbol(const Symbol& symbol) {
    if (symbolName_ != symbol.name)
        symbol_ = SymbolImage::symbol(symbol.name, {.pointSize = ui_style::bodySize});
    symbolName_ = symbol.name;
    symbolInset_ = symbol.inset;
    setAccessibleName(QString::fromUtf8(symbol.accessibleLabel));
    update();
}

bool HotkeyRecorderSegment::hitButton(const QPoint& position) const {
    return style_.shape(rect(), style::cornerRadius).contains(QPointF(position) + QPointF(0.5, 0.5));
}

void HotkeyRecorderSegment::paintEvent(QPaintEvent*) {
    const UiColors& colors = uiColors(*this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    {
        const DevicePixels device(painter);
        const QRectF frame = device.alignedPixels(rect());
        const double radius = style::cornerRadius * device.scale();
        painter.fillPath(style_.shape(frame, radius), style_.fill(colors, isDown()));
        if (focus_.isVisible()) {
            const double width = ui_style::focusRingWidth * device.scale();
            const double inset = width / 2;
            painter.strokePath(style_.shape(frame.adjusted(inset, inset, -inset, -inset), radius - inset),
                               QPen(colors.focusRing, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        }
        if (symbol_)
            paintSymbol(painter, device, colors.primary);
    }
    if (!symbol_)
        paintText(painter, colors.primary);
}

void HotkeyRecorderSegment::paintText(QPainter& painter, const QColor& color) const {
    const QRect room = rect().adjusted(style::textPadding, 0, -style::textPadding, 0);
    QFont fitting = font();
    while (QFontMetrics(fitting).horizontalAdvance(text()) > room.width() &&
           fitting.pixelSize() > style::smallestText)
        fitting.setPixelSize(fitting.pixelSize() - 1);
    painter.setFont(fitting);
    painter.setPen(color);
    const QString shown = QFontMetrics(fitting).elidedText(text(), Qt::ElideRight, room.width());
    painter.drawText(room, Qt::AlignCenter | Qt::TextSingleLine, shown);
}

void HotkeyRecorderSegment::paintSymbol(QPainter& painter, const DevicePixels& device,
                                        const QColor& color) const {
    const QRectF frame = device.alignedPixels(rect());
    const double inset = symbolInset_ * device.scale();
    const QRectF area = QRectF(QPointF(), frame.size()).adjusted(inset, inset, -inset, -inset);
    painter.drawImage(frame.topLeft(), tinted(symbol_->renderedDrawing(frame.size().toSize(), area), color));
}

} // namespace glimmerly
