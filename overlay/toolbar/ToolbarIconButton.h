#pragma once

#include "overlay/model/Color.h"
#include "overlay/toolbar/ToolbarButtonLook.h"
#include "ui/SymbolImage.h"

#include <QAbstractButton>
#include <QVariantAnimation>

#include <optional>
#include <string_view>

namespace glimmerly {

/// One button of the toolbar: a symbol on a background that shows hover, press and being lit. It sends
/// `clicked` for a press and release inside and never lights itself: that is for its owner to decide.
/// Pressed is Qt's `isDown`, so that assistive technology presses it as the mouse does.
class ToolbarIconButton : public QAbstractButton {
public:
    struct Description {
        std::string_view symbolName;
        std::string_view accessibilityText; ///< also the tooltip
        ToolbarButtonMode mode = ToolbarButtonMode::momentary;
        Color iconTintColor;
    };

    /// A symbol that does not exist leaves the button without an icon.
    ToolbarIconButton(const Description& description, QWidget* parent);

    [[nodiscard]] ToolbarButtonMode mode() const { return mode_; }
    [[nodiscard]] bool isOn() const { return isChecked(); }
    /// Lights or unlights a toggle button, animated; a momentary one is never lit.
    void setOn(bool isOn);
    [[nodiscard]] bool isHovered() const { return isHovered_; }

    /// What is on screen now, in the middle of a change too.
    [[nodiscard]] const ToolbarButtonLook& look() const { return look_; }
    [[nodiscard]] bool isAnimating() const { return lookChange_.state() == QAbstractAnimation::Running; }

    /// 28 by 28 points.
    [[nodiscard]] QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void nextCheckState() override {}

private:
    enum class Transition { immediate, animated };
    void applyVisualState(Transition transition);
    void setPressed(bool isPressed);
    void showLook(const ToolbarButtonLook& look);
    void paintIcon(QPainter& painter, const QRect& buttonPixels, double pixelsPerPoint);
    [[nodiscard]] bool isInside(const QPointF& position) const;

    std::optional<SymbolImage> symbol_;
    QImage icon_; ///< the symbol tinted, centred in the button, as last painted
    ToolbarButtonMode mode_;
    QColor iconTintColor_;
    bool isHovered_ = false;
    ToolbarButtonLook look_;       ///< on screen
    ToolbarButtonLook lookBefore_; ///< where the running change began
    ToolbarButtonLook lookAfter_;  ///< where it ends
    QVariantAnimation lookChange_;
};

} // namespace glimmerly
