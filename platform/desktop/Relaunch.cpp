#include "platform/desktop/Relaunch.h"

#include "platform/desktop/SingleInstance.h"

#include <QCoreApplication>
#include <QProcess>

#include <signal.h>

namespace glimmerly {

namespace {

/// A process that has not asked for the right by then does not come to it any more.
constexpr std::chrono::seconds patience{10};

} // namespace

bool Relaunch::isStarting() const {
    return process_ != 0 && ::kill(process_, 0) == 0 &&
           std::chrono::steady_clock::now() - started_ < patience;
}

void Relaunch::start(std::function<void(std::optional<Error>)> completion) {
    if (isStarting())
        return;
    QProcess program;
    program.setProgram(QCoreApplication::applicationFilePath());
    qint64 process = 0;
    if (!program.startDetached(&process)) {
        completion(Error::posix(errno, "Starting " + program.program().toStdString()));
        return;
    }
    process_ = static_cast<pid_t>(process);
    started_ = std::chrono::steady_clock::now();
    // It claims the right at the earliest while our main loop runs, so it finds us prepared.
    if (instance_)
        instance_->giveTo(process_, [completion = std::move(completion)] { completion(std::nullopt); });
    else
        completion(std::nullopt);
}

} // namespace glimmerly
