#pragma once

#include <QImage>
#include <QWidget>

namespace glimmerly {

/// The soft shadow around a toolbar: a sibling right below it that the mouse does not see. It follows the
/// toolbar by itself, wherever that is put, shown, hidden or raised; the toolbar owns it.
class ToolbarShadowView : public QWidget {
public:
    /// `toolbar` must outlive the shadow.
    explicit ToolbarShadowView(QWidget& toolbar);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void joinParent();
    void follow();
    [[nodiscard]] const QImage& imageAtScale(double scale);

    QWidget& toolbar_;
    QImage image_; ///< as last painted, at the pixels of its screen
};

} // namespace glimmerly
