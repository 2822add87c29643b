#pragma once

#include "ui/UiStyle.h"

#include <QFont>
#include <QLabel>

namespace glimmerly {

enum class TextSize { caption, callout, body, title2, largeTitle };
enum class TextColor { primary, secondary, error };

/// How a piece of text looks.
struct TextStyle {
    TextSize size = TextSize::body;
    QFont::Weight weight = QFont::Normal;
    TextColor color = TextColor::primary;
    double tracking = 0; ///< points added between letters
};

namespace text_style {
inline constexpr TextStyle largeTitle{.size = TextSize::largeTitle, .weight = QFont::DemiBold};
inline constexpr TextStyle title2{.size = TextSize::title2, .weight = QFont::DemiBold};
inline constexpr TextStyle body{};
inline constexpr TextStyle bodyMedium{.weight = QFont::Medium};
inline constexpr TextStyle bodySemibold{.weight = QFont::DemiBold};
inline constexpr TextStyle bodySecondary{.color = TextColor::secondary};
inline constexpr TextStyle callout{.size = TextSize::callout};
inline constexpr TextStyle calloutSecondary{.size = TextSize::callout, .color = TextColor::secondary};
inline constexpr TextStyle calloutError{.size = TextSize::callout, .color = TextColor::error};
inline constexpr TextStyle captionSecondary{.size = TextSize::caption, .color = TextColor::secondary};
/// The title above a card.
inline constexpr TextStyle sectionTitle{.size = TextSize::caption,
                                        .weight = QFont::DemiBold,
                                        .color = TextColor::secondary,
                                        .tracking = ui_style::captionTracking};
} // namespace text_style

/// The desktop's typeface in that size, in whole pixels of a screen of scale 1; larger in proportion where
/// the desktop's own text is larger than the usual 10 typographic points.
[[nodiscard]] QFont uiFont(const TextStyle& style);

/// A text of one style that wraps into the width it is given and follows the colour scheme.
class UiLabel : public QLabel {
public:
    UiLabel(const QString& text, const TextStyle& style, QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void applyColor();

    const TextColor color_;
};

} // namespace glimmerly
