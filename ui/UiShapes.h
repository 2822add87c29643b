#pragma once

#include <QPainterPath>
#include <QWidget>

namespace glimmerly {

enum class RoundedCorners { all, left, right };

/// `frame` with those of its corners rounded by `radius`, in the frame's own unit. The curvature grows
/// smoothly from the straight edges into the corners.
[[nodiscard]] QPainterPath continuousCorners(const QRectF& frame, double radius,
                                             RoundedCorners corners = RoundedCorners::all);

/// A raised area with rounded corners for what belongs together. Give it a layout without margins of its own.
class Card : public QWidget {
public:
    /// `padding` in points, on every side of the content.
    explicit Card(int padding, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A thin horizontal line across the width it is given.
class Divider : public QWidget {
public:
    explicit Divider(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// The number of a step in a circle. Assistive technology is not told of it.
class NumberBadge : public QWidget {
public:
    explicit NumberBadge(int number, QWidget* parent = nullptr);

    /// Of the number, below the badge's top.
    [[nodiscard]] int baseline() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int number_;
};

} // namespace glimmerly
