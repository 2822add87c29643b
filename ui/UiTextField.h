#pragma once

#include <QLineEdit>
#include <QRectF>

namespace glimmerly {

/// A single line to be typed into, with a rounded border.
class UiTextField : public QLineEdit {
public:
    explicit UiTextField(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// The look of a field of text: the area `field` paints on, with rounded corners and a line of one point in
/// `outline`; within it the focus ring, while `focus` has the keyboard.
void paintTextFieldFrame(QWidget& field, const QWidget& focus, const QColor& outline);

} // namespace glimmerly
