#pragma once

#include <QWidget>

namespace glimmerly {

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
