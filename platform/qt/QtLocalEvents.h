#pragma once

#include "platform/LocalEvents.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWindow>

#include <map>

class QKeyEvent;

namespace glimmerly {

/// Sees key presses as Qt gives them to a window, before shortcuts do. While a monitor is installed the
/// window in front holds the keyboard: desktops take their own keys by grabs, and these keys would never
/// come. Without a key for a minute it lets go, so that an idle desktop can still lock itself.
class QtLocalEvents : public QObject, public LocalEvents {
public:
    QtLocalEvents();

    [[nodiscard]] Monitor addLocalMonitorForEvents(EventTypeMask mask, Handler handler) override;
    void removeMonitor(Monitor monitor) override;

private:
    /// A key whose press was kept from the windows.
    struct KeptKey {
        quint32 scanCode;
        std::optional<quint64> releasedAt{}; ///< by the window system's clock
    };
    struct Installed {
        EventTypeMask mask;
        Handler handler;
    };

    bool eventFilter(QObject* receiver, QEvent* event) override;
    [[nodiscard]] bool isKept(QEvent& event);
    [[nodiscard]] bool isKeptPress(const QKeyEvent& press);
    [[nodiscard]] bool isRepeatOfKept(const QKeyEvent& press) const;
    [[nodiscard]] bool monitorsKeep(const KeyDownEvent& event) const;
    void holdKeyboard(QWindow* window);

    std::map<Monitor, Installed> monitors_;
    Monitor lastMonitor_ = 0;
    std::optional<KeptKey> keptKey_;
    QPointer<QWindow> holder_; ///< of the keyboard
    QTimer idle_;
};

} // namespace glimmerly
