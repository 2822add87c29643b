#include "platform/desktop/SingleInstance.h"

#include "platform/files/Directories.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace glimmerly {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr auto patience = 5s;
constexpr auto retryInterval = 5ms; // between two looks at a process that is starting or ending
constexpr char acknowledgement = '+';

enum class Answer { heard, gone };

/// The address of `name` in `directory`. By way of the descriptor, because a socket's path has room for 107
/// bytes only and because no link can be put in between.
sockaddr_un addressOf(const FileDescriptor& directory, const std::string& name) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = "/proc/self/fd/" + std::to_string(directory.get()) + "/" + name;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
}

FileDescriptor newSocket(int flags) {
    return FileDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | flags, 0));
}

/// An open lock file; whether it is ours is for the caller to see.
Result<FileDescriptor> openLock(const FileDescriptor& directory, const std::string& name) {
    FileDescriptor lock(::openat(directory.get(), name.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC,
                                 S_IRUSR | S_IWUSR));
    if (!lock)
        return posixFailure("Opening the lock " + name);
    // A umask that takes bits of the owner's away would shut the next start out.
    if (::fchmod(lock.get(), S_IRUSR | S_IWUSR) != 0)
        return posixFailure("Setting the mode of the lock " + name);
    return lock;
}

/// Only for the holder of the lock: whatever has the socket's name is left from a process that is dead.
Result<FileDescriptor> listenAt(const FileDescriptor& directory, const std::string& name) {
    ::unlinkat(directory.get(), name.c_str(), 0);
    FileDescriptor listener = newSocket(SOCK_NONBLOCK);
    const sockaddr_un address = addressOf(directory, name);
    const mode_t umaskBefore = ::umask(S_IXUSR | S_IRWXG | S_IRWXO);
    const int bound = ::bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
    ::umask(umaskBefore);
    if (bound != 0 || ::listen(listener.get(), SOMAXCONN) != 0)
        return posixFailure("Listening for further starts");
    return listener;
}

/// Tells the process that listens at `name` of this start and waits until it has heard; one that takes longer
/// than we have patience will hear of it when it gets to it.
Answer handOver(const FileDescriptor& directory, const std::string& name) {
    const FileDescriptor connection = newSocket(0);
    const sockaddr_un address = addressOf(directory, name);
    if (::connect(connection.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        return Answer::gone;
    pollfd readable{connection.get(), POLLIN, 0};
    const auto wait = static_cast<int>(std::chrono::milliseconds(patience).count());
    if (::poll(&readable, 1, wait) == 0)
        return Answer::heard;
    char answer = 0;
    return ::read(connection.get(), &answer, 1) == 1 ? Answer::heard : Answer::gone;
}

bool sameUser(int connection) {
    ucred peer{};
    socklen_t size = sizeof peer;
    return ::getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::geteuid();
}

/// Answers every start that waits; true when there was one.
bool acceptAll(int listener) {
    bool any = false;
    for (;;) {
        const FileDescriptor connection(::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
        if (!connection)
            return any;
        if (sameUser(connection.get()))
            any = ::send(connection.get(), &acknowledgement, 1, MSG_NOSIGNAL) == 1 || any;
    }
}

} // namespace

Result<std::optional<SingleInstance>> SingleInstance::claim(const fs::path& directoryPath,
                                                            std::string_view session) {
    FileDescriptor directory(::open(directoryPath.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!directory)
        return posixFailure("Opening the directory " + directoryPath.string());
    const std::string base = "instance-" + std::string(session);
    const std::string socketName = base + ".socket";
    auto lock = openLock(directory, base + ".lock");
    if (!lock)
        return failure(lock.error());

    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (std::chrono::steady_clock::now() < deadline) {
        if (::flock(lock->get(), LOCK_EX | LOCK_NB) == 0) {
            auto listener = listenAt(directory, socketName);
            if (!listener)
                return failure(listener.error());
            return SingleInstance(std::move(directory), std::move(*lock), std::move(*listener), socketName);
        }
        if (handOver(directory, socketName) == Answer::heard)
            return std::nullopt;
        std::this_thread::sleep_for(retryInterval);
    }
    return std::nullopt; // the right is taken, whatever its holder is doing
}

Result<std::optional<SingleInstance>> SingleInstance::claim() {
    const auto directory = temporaryDirectory();
    if (!directory)
        return failure(directory.error());
    return claim(*directory, displaySessionName());
}

SingleInstance::SingleInstance(FileDescriptor directory, FileDescriptor lock, FileDescriptor listener,
                               std::string socket)
    : directory_(std::move(directory)), lock_(std::move(lock)), listener_(std::move(listener)),
      socketName_(std::move(socket)) {}

SingleInstance::SingleInstance(SingleInstance&&) noexcept = default;

SingleInstance::~SingleInstance() {
    // The lock file stays: removing it would let two processes lock two files of the same name.
    if (lock_)
        ::unlinkat(directory_.get(), socketName_.c_str(), 0);
}

void SingleInstance::onHandOver(std::function<void()> handler) {
    notifier_ = std::make_unique<QSocketNotifier>(listener_.get(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated,
                     [listener = listener_.get(), handler = std::move(handler)] {
                         if (acceptAll(listener))
                             handler();
                     });
}

std::string displaySessionName() {
    const char* display = std::getenv("DISPLAY");
    std::string name = display ? display : "";
    const auto colon = name.rfind(':');
    const auto screen = name.find('.', colon == std::string::npos ? 0 : colon);
    if (colon != std::string::npos && screen != std::string::npos)
        name.erase(screen);
    std::ranges::replace_if(name, [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
}

} // namespace glimmerly
