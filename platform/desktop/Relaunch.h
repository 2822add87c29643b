#pragma once

#include "base/Error.h"
#include "platform/files/FileDescriptor.h"

#include <QTimer>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

class QSocketNotifier;

namespace glimmerly {

class SingleInstance;

/// Starts a version of this program and gives it the right to be the running one.
class Relaunch {
public:
    using Completion = std::function<void(std::optional<Error>)>;

    /// `instance`, which must outlive this, is none in a program that could not claim the right; it has none
    /// to give.
    explicit Relaunch(SingleInstance* instance);
    ~Relaunch();
    Relaunch(const Relaunch&) = delete;
    Relaunch& operator=(const Relaunch&) = delete;

    /// `completion` runs once: without an error when the process of `program` has the right and waits for
    /// this one's end, with one when it could not be started, ended before, or let ten seconds pass, or when
    /// another one is starting.
    void start(const std::filesystem::path& program, Completion completion);

private:
    void watch(FileDescriptor process);
    void complete(std::optional<Error> error);

    SingleInstance* instance_;
    Completion completion_; ///< set while one is starting
    FileDescriptor process_;
    std::unique_ptr<QSocketNotifier> ended_;
    QTimer patience_;
};

} // namespace glimmerly
