#pragma once

#include <QTimer>
#include <QWidget>

namespace glimmerly {

/// A small sign that something is under way; it turns while it is on the screen.
class UiSpinner : public QWidget {
public:
    /// `name` is what it is called where it cannot be seen.
    explicit UiSpinner(const QString& name, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QTimer turning_;
    int step_ = 0;
};

} // namespace glimmerly
