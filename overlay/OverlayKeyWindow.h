#pragma once

#include <QPointer>
#include <QWidget>

namespace glimmerly {

class OverlayCanvasView;

/// The window of one overlay: no frame, no background of its own, filled by the canvas.
class OverlayKeyWindow : public QWidget {
public:
    OverlayKeyWindow();

    /// Takes `canvas` as its one child, at its top-left corner and of its size.
    void setContentView(OverlayCanvasView* canvas);
    [[nodiscard]] OverlayCanvasView* contentView() const;

    /// True while typed text goes into an editor.
    [[nodiscard]] bool firstResponderIsTextView() const;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QPointer<OverlayCanvasView> contentView_;
};

} // namespace glimmerly
