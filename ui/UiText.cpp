#include "ui/UiText.h"

#include "ui/UiColors.h"

#include <QEvent>
#include <QFontInfo>
#include <QGuiApplication>

#include <algorithm>
#include <cmath>

namespace glimmerly {

namespace {

constexpr double usualPixelSize = 10 * 96 / 72.0; // of a desktop's own text

double pointSize(TextSize size) {
    switch (size) {
    case TextSize::caption:
        return ui_style::captionSize;
    case TextSize::callout:
        return ui_style::calloutSize;
    case TextSize::body:
        break;
    case TextSize::title2:
        return ui_style::title2Size;
    case TextSize::largeTitle:
        return ui_style::largeTitleSize;
    }
    return ui_style::bodySize;
}

const QColor& colorOf(const UiColors& colors, TextColor color) {
    switch (color) {
    case TextColor::primary:
        break;
    case TextColor::secondary:
        return colors.secondary;
    case TextColor::error:
        return colors.error;
    }
    return colors.primary;
}

} // namespace

QFont uiFont(const TextStyle& style) {
    QFont font = QGuiApplication::font();
    const double desktopScale = std::max(1.0, QFontInfo(font).pixelSize() / usualPixelSize);
    font.setPixelSize(static_cast<int>(std::lround(pointSize(style.size) * desktopScale)));
    font.setWeight(style.weight);
    font.setLetterSpacing(QFont::AbsoluteSpacing, style.tracking);
    return font;
}

UiLabel::UiLabel(const QString& text, const TextStyle& style, QWidget* parent)
    : QLabel(parent), color_(style.color) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setFont(uiFont(style));
    setText(text);
    applyColor();
}

void UiLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColor();
}

void UiLabel::applyColor() {
    const QColor& wanted = colorOf(uiColors(*this), color_);
    if (palette().color(QPalette::Disabled, foregroundRole()) == wanted)
        return; // one colour in all states
    QPalette changed = palette();
    changed.setColor(foregroundRole(), wanted);
    setPalette(changed);
}

} // namespace glimmerly
