#pragma once

#include <QObject>

#include <functional>

class QKeyEvent;

namespace glimmerly {

/// Sees each key press that reaches this application, whichever of its windows has the keyboard, before that
/// window does; for as long as it lives. Not one of `LocalEvents`: as long as there is one of those, the
/// window in front holds the whole keyboard, which an overlay never does.
class KeyDownMonitor : private QObject {
public:
    enum class Verdict { pass, swallow };
    /// Gets the press and the window that it is for.
    using Handler = std::function<Verdict(const QKeyEvent&, const QObject& window)>;

    /// `handler` may destroy the monitor.
    explicit KeyDownMonitor(Handler handler);

private:
    bool eventFilter(QObject* receiver, QEvent* event) override;

    Handler handler_;
};

} // namespace glimmerly
