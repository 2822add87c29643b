#pragma once

#include <QCheckBox>

namespace glimmerly {

class FocusVisibility;

/// A label on the left and an on-off switch at the right edge of the width it is given. The label wraps where
/// it must; it is the accessible name, and clicking it switches too.
class UiSwitch : public QCheckBox {
public:
    /// Points right of the switch that its focus ring needs; let the widget stand out so far.
    static constexpr int ringMargin = 4;

    explicit UiSwitch(const QString& label, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override { return rect().contains(position); }

private:
    void paintTrack(QPainter& painter, const QRectF& points) const;

    FocusVisibility& focus_;
};

} // namespace glimmerly
