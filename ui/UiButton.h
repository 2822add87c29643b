#pragma once

#include "ui/SymbolImage.h"

#include <QPushButton>

#include <optional>
#include <string_view>

namespace glimmerly {

class FocusVisibility;

enum class ButtonKind { bordered, prominent, link };
enum class ControlSize { regular, large };
enum class ButtonTint { accent, success };

struct ButtonStyle {
    ButtonKind kind = ButtonKind::bordered;
    ControlSize size = ControlSize::regular;
};

/// A button in the one look of the program's windows, with a symbol before its label where it has one. Its
/// label is its accessible name. As large as its label needs.
class UiButton : public QPushButton {
public:
    /// `label` is shown as it stands: an ampersand is one.
    UiButton(const QString& label, ButtonStyle style, QWidget* parent = nullptr);

    void setLabel(const QString& label);
    /// A name that no symbol has leaves the button without one.
    void setSymbol(std::string_view name);
    /// Only to be seen in a prominent button. A disabled button keeps the tint `success`.
    void setTint(ButtonTint tint);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override { return rect().contains(position); }
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    struct Look;
    [[nodiscard]] Look look() const;
    void paintContent(QPainter& painter, const QColor& color) const;

    ButtonStyle style_;
    ButtonTint tint_ = ButtonTint::accent;
    std::optional<SymbolImage> symbol_;
    FocusVisibility& focus_;
};

} // namespace glimmerly
