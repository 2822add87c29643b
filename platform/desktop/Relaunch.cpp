#include "platform/desktop/Relaunch.h"

#include "platform/desktop/SingleInstance.h"
#include "platform/files/ProcessDescriptor.h"

#include <QProcess>
#include <QSocketNotifier>

#include <cerrno>
#include <utility>

namespace glimmerly {

namespace {

/// A process that has not asked for the right by then does not come to it any more.
constexpr std::chrono::seconds patience{10};

} // namespace

Relaunch::Relaunch(SingleInstance* instance) : instance_(instance) {
    patience_.setSingleShot(true);
    QObject::connect(&patience_, &QTimer::timeout,
                     [this] { complete(Error::posix(ETIMEDOUT, "Waiting for the new process")); });
}

Relaunch::~Relaunch() = default;

void Relaunch::start(const std::filesystem::path& program, Completion completion) {
    if (completion_)
        return completion(Error::posix(EBUSY, "Another new process is starting"));
    // Beside it the new process would find the hotkey and the log in use.
    if (!instance_)
        return completion(Error::posix(ENOLCK, "Handing over the right to run"));
    QProcess starting;
    starting.setProgram(QString::fromStdString(program.string()));
    qint64 process = 0;
    const bool isStarted = starting.startDetached(&process);
    completion_ = std::move(completion);
    if (!isStarted)
        return complete(Error::posix(errno, "Starting " + program.string()));
    // It claims the right at the earliest while our main loop runs, so it finds us prepared.
    const auto pid = static_cast<pid_t>(process);
    instance_->giveTo(pid, [this] { complete(std::nullopt); });
    watch(openProcess(pid));
    patience_.start(patience);
}

void Relaunch::watch(FileDescriptor process) {
    if (!process)
        return complete(Error::posix(ESRCH, "Starting the new process"));
    process_ = std::move(process);
    ended_ = std::make_unique<QSocketNotifier>(process_.get(), QSocketNotifier::Read);
    QObject::connect(ended_.get(), &QSocketNotifier::activated, ended_.get(),
                     [this] { complete(Error::posix(ESRCH, "The new process ended at once")); });
}

void Relaunch::complete(std::optional<Error> error) {
    if (!completion_)
        return;
    patience_.stop();
    if (ended_) {
        ended_->setEnabled(false);
        ended_.release()->deleteLater(); // this may run in its signal
    }
    if (error)
        instance_->giveTo(0, {});
    std::exchange(completion_, {})(std::move(error));
}

} // namespace glimmerly
