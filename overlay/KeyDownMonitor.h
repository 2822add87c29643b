#pragma once

#include <QObject>

#include <functional>

class QKeyEvent;

namespace glimmerly {

/// Sees each key press that reaches this application, whichever of its windows has the keyboard, before that
/// window does; for as long as it lives.
class KeyDownMonitor : private QObject {
public:
    enum class Verdict { pass, swallow };
    using Handler = std::function<Verdict(const QKeyEvent&)>;

    /// `handler` may destroy the monitor.
    explicit KeyDownMonitor(Handler handler);

private:
    bool eventFilter(QObject* receiver, QEvent* event) override;

    Handler handler_;
};

} // namespace glimmerly
