#include "ui/UiButton.h"

#include "ui/DevicePixels.h"
#include "ui/FocusRing.h"
#include "ui/UiColors.h"
#include "ui/UiStyle.h"
#include "ui/UiSymbol.h"
#include "ui/UiText.h"

#include <algorithm>

namespace glimmerly {

/// The colours of a button in its present state; an invalid one is not painted.
struct UiButton::Look {
    QColor fill;
    QColor outline;
    QColor content;
    QColor focusRing;
};

namespace {

struct Measures {
    int height;
    int sidePadding;
    double cornerRadius;
};

Measures measuresOf(ButtonStyle style) {
    if (style.kind == ButtonKind::link)
        return {0, ui_style::linkSidePadding, ui_style::linkCornerRadius};
    if (style.size == ControlSize::large)
        return {ui_style::largeButtonHeight, ui_style::largeButtonPadding, ui_style::largeButtonCornerRadius};
    return {ui_style::buttonHeight, ui_style::buttonPadding, ui_style::buttonCornerRadius};
}

/// `color` as it looks under the mouse, or pressed: towards black.
QColor shaded(const QColor& color, double amount) {
    const auto keep = static_cast<float>(1 - amount);
    return QColor::fromRgbF(color.redF() * keep, color.greenF() * keep, color.blueF() * keep, color.alphaF());
}

QColor faded(QColor color, double opacity) {
    color.setAlphaF(color.alphaF() * static_cast<float>(opacity));
    return color;
}

constexpr double hoverShade = 0.05;
constexpr double pressShade = 0.15;
constexpr double disabledOpacity = 0.4;

} // namespace

UiButton::UiButton(const QString& label, ButtonStyle style, QWidget* parent)
    : QPushButton(parent), style_(style), focus_(*new FocusVisibility(*this)) {
    setFont(uiFont(style.kind == ButtonKind::prominent ? text_style::bodyMedium : text_style::body));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setLabel(label);
    if (style.kind == ButtonKind::link)
        setCursor(Qt::PointingHandCursor);
}

void UiButton::setLabel(const QString& label) {
    setText(QString(label).replace(QLatin1Char('&'), QLatin1String("&&")));
    setAccessibleName(label);
}

void UiButton::setSymbol(std::string_view name) {
    symbol_ =
        SymbolImage::symbol(name, {.pointSize = static_cast<double>(font().pixelSize()),
                                   .weight = style_.kind == ButtonKind::prominent ? SymbolWeight::medium
                                                                                  : SymbolWeight::regular});
    updateGeometry();
    update();
}

void UiButton::setTint(ButtonTint tint) {
    tint_ = tint;
    update();
}

QSize UiButton::sizeHint() const {
    const Measures measures = measuresOf(style_);
    const QSize label = fontMetrics().size(Qt::TextShowMnemonic, text());
    const QSize symbol = symbol_ ? symbol_->size().toSize() : QSize();
    const int gap = symbol_ && !text().isEmpty() ? ui_style::symbolSpacing : 0;
    const int margin = style_.kind == ButtonKind::link ? ui_style::linkPadding : ui_style::buttonTextMargin;
    return {label.width() + std::max(0, symbol.width()) + gap + 2 * measures.sidePadding,
            std::max(measures.height, std::max(label.height(), symbol.height()) + 2 * margin)};
}

void UiButton::enterEvent(QEnterEvent* event) {
    QPushButton::enterEvent(event);
    update();
}

void UiButton::leaveEvent(QEvent* event) {
    QPushButton::leaveEvent(event);
    update();
}

UiButton::Look UiButton::look() const {
    const UiColors& colors = uiColors(*this);
    const double shade = !isEnabled() ? 0 : isDown() ? pressShade : underMouse() ? hoverShade : 0;
    Look look;
    switch (style_.kind) {
    case ButtonKind::bordered:
        look = {shaded(colors.control, shade), colors.controlOutline, colors.primary, colors.focusRing};
        break;
    case ButtonKind::prominent:
        look = {shaded(tint_ == ButtonTint::success ? colors.success : colors.accent, shade),
                {},
                colors.onAccent,
                colors.onAccent};
        break;
    case ButtonKind::link:
        look = {{}, {}, shaded(colors.link, shade), colors.focusRing};
        break;
    }
    if (looksEnabled(*this) || tint_ == ButtonTint::success)
        return look;
    if (style_.kind == ButtonKind::prominent)
        return {colors.quaternaryFill, {}, faded(colors.primary, disabledOpacity), look.focusRing};
    look.fill = look.fill.isValid() ? faded(look.fill, disabledOpacity) : QColor();
    look.content = faded(look.content, disabledOpacity);
    return look;
}

void UiButton::paintEvent(QPaintEvent*) {
    const Look colors = look();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    {
        const DevicePixels device(painter);
        const QRectF shape = device.alignedPixels(rect());
        const double radius = measuresOf(style_).cornerRadius * device.scale();
        painter.setPen(Qt::NoPen);
        painter.setBrush(colors.fill.isValid() ? QBrush(colors.fill) : QBrush(Qt::NoBrush));
        painter.drawRoundedRect(shape, radius, radius);
        if (colors.outline.isValid()) {
            const double line = device.lineWidth(ui_style::hairline);
            const double inset = line / 2;
            painter.setPen(QPen(colors.outline, line));
            painter.setBrush(Qt::NoBrush);
            painter.drawRoundedRect(shape.adjusted(inset, inset, -inset, -inset), radius - inset,
                                    radius - inset);
        }
        if (focus_.isVisible()) {
            // Within a filled button the ring keeps off the edge, where it would only look like a border.
            const double off = style_.kind == ButtonKind::prominent ? device.lineWidth(2) : 0;
            paintFocusRing(painter, shape.adjusted(off, off, -off, -off), std::max(radius - off, 0.0),
                           device.scale(), colors.focusRing);
        }
    }
    paintContent(painter, colors.content);
}

void UiButton::paintContent(QPainter& painter, const QColor& color) const {
    const QString shown = text();
    const int textWidth = fontMetrics().size(Qt::TextShowMnemonic, shown).width();
    const int symbolWidth = symbol_ ? static_cast<int>(symbol_->size().width()) : 0;
    const int gap = symbol_ && !shown.isEmpty() ? ui_style::symbolSpacing : 0;
    const int content = textWidth + symbolWidth + gap;
    int left = style_.kind == ButtonKind::link ? ui_style::linkSidePadding : (width() - content) / 2;
    if (symbol_) {
        paintSymbol(painter, *symbol_, QRect(left, 0, symbolWidth, height()), color);
        left += symbolWidth + gap;
    }
    painter.setPen(color);
    painter.drawText(QRect(left, 0, textWidth, height()),
                     Qt::AlignVCenter | Qt::AlignLeft | Qt::TextShowMnemonic, shown);
}

} // namespace glimmerly
