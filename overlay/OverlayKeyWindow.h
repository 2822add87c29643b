#pragma once

#include "overlay/KeyDownMonitor.h"

#include <QPointer>
#include <QWidget>

#include <memory>

namespace glimmerly {

class OverlayCanvasView;

/// The window of one overlay: no frame, no background of its own, filled by the canvas.
class OverlayKeyWindow : public QWidget {
public:
    OverlayKeyWindow();
    ~OverlayKeyWindow() override;

    /// Takes `canvas`, or nothing, as its one child, at its top-left corner and of its size. The earlier one
    /// goes away as soon as no event is on its way to it.
    void setContentView(std::unique_ptr<OverlayCanvasView> canvas);
    [[nodiscard]] OverlayCanvasView* contentView() const;

    /// True while typed text goes into an editor.
    [[nodiscard]] bool firstResponderIsTextView() const;

    /// Command-Z undoes and Command-Shift-Z redoes: typing while a text is edited, else annotations. Command
    /// is the Super key or Control. Passed on when it is another key or there was nothing to do.
    KeyDownMonitor::Verdict performKeyEquivalent(const QKeyEvent& event);

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QPointer<OverlayCanvasView> contentView_;
};

} // namespace glimmerly
