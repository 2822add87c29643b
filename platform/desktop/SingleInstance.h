#pragma once

#include "base/Result.h"
#include "platform/files/FileDescriptor.h"

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace glimmerly {

/// The right to be the only running program of its name: held by at most one process at a time, given up when
/// the process ends, however that happens.
class SingleInstance {
public:
    /// Takes the right, or hands over to the process that has it and answers none. Waits until that process
    /// has heard of this start, or has given the right up, but no longer than 5 seconds; once it has given
    /// the right to this process, until it has ended, again no longer than 5 seconds. `directory` must be
    /// the user's own; `session` tells display sessions apart. An error when neither can be found out.
    [[nodiscard]] static Result<std::optional<SingleInstance>> claim(const std::filesystem::path& directory,
                                                                     std::string_view session);
    /// The same for this user and the display session that the environment names.
    [[nodiscard]] static Result<std::optional<SingleInstance>> claim();

    SingleInstance(SingleInstance&&) noexcept;
    SingleInstance& operator=(SingleInstance&&) = delete;
    ~SingleInstance();

    /// True while no process of another display session has its right: what lies in the user's own
    /// directories is then nobody else's.
    [[nodiscard]] bool isOnlySession() const;

    /// `handler` runs on the main thread whenever another start has handed over. Needs a main loop to come.
    void onHandOver(std::function<void()> handler);
    /// Gives the right to the process `successor` as soon as that one claims it, and calls `given`, on the
    /// main thread. At no moment does nobody have the right: starts that come meanwhile wait for the new
    /// holder. Needs `onHandOver` before; this process should end then.
    void giveTo(pid_t successor, std::function<void()> given);

private:
    struct Right;
    explicit SingleInstance(std::unique_ptr<Right> right);

    std::unique_ptr<Right> right_;
};

/// The name of the display session that the environment points to, fit for a file name. The screen number is
/// no part of it: ":0" and ":0.1" are the same session.
[[nodiscard]] std::string displaySessionName();

} // namespace glimmerly
