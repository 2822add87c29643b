#include "platform/desktop/TerminationSignals.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

namespace glimmerly {

namespace {

constexpr std::array signals{SIGTERM, SIGINT, SIGHUP};

/// Open until the process ends: a signal may arrive at any moment.
std::array<int, 2> signalPipe{-1, -1};

void noteSignal(int) {
    const int savedErrno = errno;
    const char byte = 0;
    // A full pipe has said it already.
    [[maybe_unused]] const auto written = ::write(signalPipe[1], &byte, 1);
    errno = savedErrno;
}

void drain() {
    std::array<char, 64> bytes{};
    while (::read(signalPipe[0], bytes.data(), bytes.size()) > 0) {
    }
}

/// nohup's wish is respected. Shells also have what they start in the background ignore SIGINT, but that is
/// only meant for the terminal's key.
bool isToBeIgnored(int signal) {
    struct sigaction inherited{};
    return signal == SIGHUP && ::sigaction(signal, nullptr, &inherited) == 0 &&
           inherited.sa_handler == SIG_IGN;
}

void install(int signal, void (*handler)(int)) {
    struct sigaction action{};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
}

void doNothing(int) {}

} // namespace

void surviveFailedWrites() {
    // Handlers, as children would inherit that the signals are ignored.
    for (const int signal : {SIGPIPE, SIGXFSZ})
        install(signal, doNothing);
}

TerminationSignals::TerminationSignals(std::function<void()> handler) {
    if (signalPipe[0] < 0 && ::pipe2(signalPipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    notifier_ = std::make_unique<QSocketNotifier>(signalPipe[0], QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [handler = std::move(handler)] {
        drain();
        handler();
    });
    for (const int signal : signals) {
        if (!isToBeIgnored(signal))
            install(signal, noteSignal);
    }
}

TerminationSignals::~TerminationSignals() = default;

} // namespace glimmerly
