#pragma once

#include "platform/x11/X11Connection.h"

#include <QObject>
#include <QTimer>
#include <xcb/damage.h>

#include <chrono>
#include <functional>
#include <vector>

namespace glimmerly {

/// Waits until the desktop has painted what a window of this program covered.
///
/// Under a window that goes away the pixels stay as they were until the programs below have painted theirs,
/// or the compositor its next picture; a copy made at once would show our overlay or menu again. Nobody tells
/// when that is done. What can be seen is painting that comes and then pauses.
class X11Repainting : public QObject {
public:
    struct Limits {
        std::chrono::milliseconds pause{30};                   ///< without painting, after painting
        std::chrono::milliseconds longestWithoutPainting{100}; ///< after the window went
        std::chrono::milliseconds longest{300};                ///< after the window went
    };

    /// `connection` must outlive this object, which takes all of its events.
    X11Repainting(const X11Connection& connection, Limits limits);

    /// Runs `task`, at once unless a window of ours has just gone, else as soon as there was painting and
    /// then a pause, or at the latest when the limits say.
    void whenDone(std::function<void()> task);

private:
    using Clock = std::chrono::steady_clock;

    bool eventFilter(QObject* watched, QEvent* event) override;
    void startWatching();
    void takePaintEvents();
    [[nodiscard]] bool isDone() const;
    void check();

    const X11Connection& connection_;
    const Limits limits_;
    std::uint8_t paintEvent_ = 0; ///< 0: the server cannot report painting
    Clock::time_point windowWent_;
    Clock::time_point lastPainting_;
    xcb_damage_damage_t damage_ = XCB_NONE;
    QTimer timer_;
    std::vector<std::function<void()>> tasks_;
};

} // namespace glimmerly
