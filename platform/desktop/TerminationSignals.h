#pragma once

#include <functional>
#include <memory>

class QSocketNotifier;

namespace glimmerly {

/// SIGTERM, SIGINT and SIGHUP as a call on the main thread. A signal that the process was started with
/// ignored stays ignored. One object a process; a signal that arrives before the main loop waits for it.
class TerminationSignals {
public:
    explicit TerminationSignals(std::function<void()> handler);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
    std::unique_ptr<QSocketNotifier> notifier_;
};

/// Has a write to a pipe that nobody reads, or beyond the size that a file may have, fail with its error
/// instead of ending the process. Programs that this one starts are not affected.
void surviveFailedWrites();

} // namespace glimmerly
