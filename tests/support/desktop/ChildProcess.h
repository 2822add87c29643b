#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace glimmerly {

using Environment = std::map<std::string, std::string>;

/// The test's own environment without what ties it to a desktop or a home.
[[nodiscard]] Environment cleanEnvironment();

/// A program of its own, ended when this goes or when the test itself is killed.
class ChildProcess {
public:
    struct Options {
        std::vector<std::string> command; ///< found along PATH
        Environment environment = cleanEnvironment();
        std::filesystem::path output = "/dev/null";
        std::filesystem::path errors = "/dev/null";
        std::function<void()> beforeExec = [] {}; ///< runs in the child
    };

    explicit ChildProcess(const Options& options);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    [[nodiscard]] pid_t pid() const { return pid_; }
    [[nodiscard]] bool isRunning();
    void sendSignal(int number) const;
    /// The exit status, 128 + number after a signal; none when it still runs after `limit`.
    std::optional<int> waitForExit(std::chrono::milliseconds limit);

    /// Runs a program to its end and answers what it wrote on standard output; none when it failed or took
    /// more than fifteen seconds.
    [[nodiscard]] static std::optional<std::string> outputOf(const Options& options);

private:
    pid_t pid_ = -1;
    std::optional<int> exitStatus_;
};

} // namespace glimmerly
