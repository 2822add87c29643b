#pragma once

#include <QWidget>

class QAbstractScrollArea;

namespace glimmerly {

/// The rounded border and the background of an area for several lines of text, which fills it. The focus ring
/// is shown while the area has the keyboard.
class UiTextFrame : public QWidget {
public:
    /// Takes `area` over, whose own frame and background go.
    explicit UiTextFrame(QAbstractScrollArea& area, QWidget* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QAbstractScrollArea& area_;
};

} // namespace glimmerly
