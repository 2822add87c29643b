#include "tests/support/desktop/ChildProcess.h"

#include "tests/support/ScratchDirectory.h"
#include "tests/support/desktop/WaitUntil.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>

namespace glimmerly {

namespace {

[[noreturn]] void becomeChild(const ChildProcess::Options& options, pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(126);
    const auto redirect = [](int stream, const std::filesystem::path& file, int flags) {
        const int opened = open(file.c_str(), flags | O_CLOEXEC, 0600);
        if (opened < 0 || dup2(opened, stream) < 0)
            _exit(126);
    };
    redirect(STDOUT_FILENO, options.output, O_WRONLY | O_CREAT | O_APPEND);
    redirect(STDERR_FILENO, options.errors, O_WRONLY | O_CREAT | O_APPEND);
    redirect(STDIN_FILENO, "/dev/null", O_RDONLY);
    std::vector<std::string> assignments;
    for (const auto& [name, value] : options.environment)
        assignments.push_back(std::string(name).append("=").append(value));
    const auto pointers = [](auto& strings) {
        std::vector<char*> list;
        for (auto& text : strings)
            list.push_back(text.data());
        list.push_back(nullptr);
        return list;
    };
    auto command = options.command;
    options.beforeExec();
    execvpe(command.front().c_str(), pointers(command).data(), pointers(assignments).data());
    _exit(127);
}

pid_t start(const ChildProcess::Options& options) {
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child < 0)
        throw std::runtime_error("cannot fork for " + options.command.front());
    if (child == 0)
        becomeChild(options, parent);
    return child;
}

} // namespace

Environment cleanEnvironment() {
    Environment environment;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string text = *entry;
        const auto name = text.substr(0, text.find('='));
        constexpr std::array tied = {"DISPLAY", "WAYLAND", "XDG_",       "DBUS_",
                                     "QT_",     "HOME",    "XAUTHORITY", "TMPDIR"};
        bool keep = name.size() < text.size();
        for (const std::string prefix : tied)
            keep = keep && !name.starts_with(prefix);
        if (keep)
            environment[name] = text.substr(name.size() + 1);
    }
    environment["LANG"] = "C.UTF-8";
    return environment;
}

ChildProcess::ChildProcess(const Options& options) : pid_(start(options)) {}

ChildProcess::~ChildProcess() {
    if (!isRunning())
        return;
    sendSignal(SIGTERM);
    if (!waitForExit(std::chrono::seconds(5))) {
        sendSignal(SIGKILL);
        (void)waitForExit(std::chrono::seconds(5));
    }
}

bool ChildProcess::isRunning() {
    if (exitStatus_)
        return false;
    int status = 0;
    if (waitpid(pid_, &status, WNOHANG) != pid_)
        return true;
    exitStatus_ = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    return false;
}

void ChildProcess::sendSignal(int number) const {
    if (!exitStatus_)
        kill(pid_, number);
}

std::optional<int> ChildProcess::waitForExit(std::chrono::milliseconds limit) {
    (void)waitUntil([this] { return !isRunning(); }, limit);
    return exitStatus_;
}

std::optional<std::string> ChildProcess::outputOf(const Options& options) {
    const ScratchDirectory place;
    auto collecting = options;
    collecting.output = place.path() / "output";
    ChildProcess process(collecting);
    if (process.waitForExit(patience) != 0)
        return std::nullopt;
    return contentOf(collecting.output);
}

} // namespace glimmerly
