#pragma once

#include <QFocusEvent>
#include <QObject>
#include <QRectF>

class QPainter;
class QWidget;

namespace glimmerly {

/// Whether a widget's keyboard focus is to be seen: once it came by the keyboard or a key was used, not after
/// a mere click. Watches the widget, and repaints it when that changes.
class FocusVisibility : public QObject {
public:
    /// A child of `widget`.
    explicit FocusVisibility(QWidget& widget);

    [[nodiscard]] bool isVisible() const;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& widget_;
    bool cameByKeyboard_ = false;
};

/// A line in `color` just inside `shape`, with corners of `radius`, both in the painter's own units, of which
/// `unitsPerPoint` make a point.
void paintFocusRing(QPainter& painter, const QRectF& shape, double radius, double unitsPerPoint,
                    const QColor& color);

} // namespace glimmerly
