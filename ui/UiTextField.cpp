#include "ui/UiTextField.h"

#include "ui/DevicePixels.h"
#include "ui/FocusRing.h"
#include "ui/UiColors.h"
#include "ui/UiStyle.h"
#include "ui/UiText.h"

#include <algorithm>

namespace glimmerly {

UiTextField::UiTextField(QWidget* parent) : QLineEdit(parent) {
    setFrame(false);
    constexpr int unlimited = 1 << 24; // what is pasted is never cut
    setMaxLength(unlimited);
    setFont(uiFont(text_style::body));
    setTextMargins(ui_style::fieldPadding, 0, ui_style::fieldPadding, 0);
    QPalette transparent = palette();
    transparent.setColor(QPalette::Base, Qt::transparent); // what is below the text is painted here
    setPalette(transparent);
}

QSize UiTextField::sizeHint() const {
    return {QLineEdit::sizeHint().width(),
            std::max(ui_style::fieldHeight, fontMetrics().height() + 2 * ui_style::buttonTextMargin)};
}

void UiTextField::paintEvent(QPaintEvent* event) {
    paintTextFieldFrame(*this, *this, uiColors(*this).controlOutline);
    QLineEdit::paintEvent(event);
}

void paintTextFieldFrame(QWidget& field, const QWidget& focus, const QColor& outline) {
    const UiColors& colors = uiColors(field);
    QPainter painter(&field);
    painter.setRenderHint(QPainter::Antialiasing);
    const DevicePixels device(painter);
    const QRectF shape = device.alignedPixels(field.rect());
    const double corner = ui_style::fieldCornerRadius * device.scale();
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors.controlBackground);
    painter.drawRoundedRect(shape, corner, corner);
    const double line = device.lineWidth(ui_style::hairline);
    const double inset = line / 2;
    painter.setPen(QPen(outline, line));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(shape.adjusted(inset, inset, -inset, -inset), corner - inset, corner - inset);
    if (focus.hasFocus())
        paintFocusRing(painter, shape.adjusted(line, line, -line, -line), corner - line, device.scale(),
                       colors.focusRing);
}

} // namespace glimmerly
