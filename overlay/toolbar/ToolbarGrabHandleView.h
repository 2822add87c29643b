#pragma once

#include "base/Geometry.h"

#include <QWidget>

#include <functional>
#include <optional>

namespace glimmerly {

/// Three dots by which the user drags the toolbar. It only reports the pointer's way; moving the toolbar is
/// for its owner. Deltas are points, y upwards.
class ToolbarGrabHandleView : public QWidget {
public:
    explicit ToolbarGrabHandleView(QWidget* parent);

    std::function<void(bool isDragging)> onDragStateChanged;
    std::function<void(double dx, double dy)> onDragDelta;
    /// With the pointer's position in the window, in Qt's own coordinates.
    std::function<void(QPointF locationInWindow)> onSuggestToolbarCursorRefresh;

    [[nodiscard]] bool isDragging() const { return isDragging_; }

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void setDragging(bool isDragging, QPointF locationInWindow);

    bool isDragging_ = false;
    std::optional<QPointF> lastLocationInWindow_;
};

} // namespace glimmerly
