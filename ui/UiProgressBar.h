#pragma once

#include <QProgressBar>

class QVariantAnimation;

namespace glimmerly {

/// A thin bar that shows how far something is, or, with a range of 0 to 0, only that it goes on.
class UiProgressBar : public QProgressBar {
public:
    explicit UiProgressBar(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    [[nodiscard]] bool isBusy() const { return minimum() == maximum(); }

    QVariantAnimation* motion_; ///< runs while it is seen and busy
};

} // namespace glimmerly
