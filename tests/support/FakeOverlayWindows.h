#pragma once

#include "platform/OverlayWindows.h"

#include <QWidget>

#include <cmath>
#include <functional>

namespace glimmerly {

/// Shows the overlay as a plain window of the frame's size.
class FakeOverlayWindows : public OverlayWindows {
public:
    void prepare(QWidget& window, const Screen& onScreen, Rect inFrame) override {
        screen = onScreen;
        frame = inFrame;
        window.resize(static_cast<int>(std::ceil(frame.width)), static_cast<int>(std::ceil(frame.height)));
    }
    void makeKeyAndOrderFront(QWidget& window) override {
        window.show();
        window.activateWindow();
    }
    bool orderOut(QWidget& window) override {
        window.hide();
        if (onOrderOut)
            onOrderOut();
        return hasKeyboard;
    }

    std::optional<Screen> screen; ///< of the last overlay
    Rect frame;
    bool hasKeyboard = true;
    std::function<void()> onOrderOut;
};

} // namespace glimmerly
