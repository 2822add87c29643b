#pragma once

#include <QImage>
#include <QObject>
#include <QRect>

#include <functional>
#include <optional>

class QMenu;

namespace glimmerly {

/// Finds out when a menu that was just used can no longer be seen. Its window is soon unmapped, but then the
/// programs beneath repaint, or the compositor fades it out, and nobody tells when they have done.
class MenuDisappearance {
public:
    /// Follows `menu`, which is shown as a window of ours.
    void watch(QMenu& menu);
    /// Runs `action` from the main loop once the place of the menu has changed and then been still. Without a
    /// menu of ours just hidden, a tray host has drawn it, around the mouse pointer.
    void whenGone(std::function<void()> action);

private:
    struct Sight {
        QRect area; ///< in Qt's global coordinates
        QImage picture;
    };
    class Wait;

    QObject context_; // ends the connections and the waits with this object
    std::optional<Sight> lastHidden_;
};

} // namespace glimmerly
