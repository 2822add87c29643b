#include "platform/desktop/SingleInstance.h"

#include "platform/desktop/DescriptorPassing.h"
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
#include <array>
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
constexpr char theRight = '=';                   // with the lock and the listener
constexpr std::string_view prefix = "instance-"; // of the names of all sessions' locks and sockets
constexpr const char* socketSuffix = ".socket";
constexpr const char* lockSuffix = ".lock";

std::string procPathOf(const FileDescriptor& directory) {
    return "/proc/self/fd/" + std::to_string(directory.get());
}

/// The address of `name` in `directory`. By way of the descriptor, because a socket's path has room for 107
/// bytes only and because no link can be put in between.
sockaddr_un addressOf(const FileDescriptor& directory, const std::string& name) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = procPathOf(directory) + "/" + name;
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

/// What the process that has the right answered to a start.
struct Answer {
    enum class Kind { heard, gone, given } kind = Kind::gone;
    FileDescriptor connection{};
    FileDescriptor lock{};     ///< with `given`
    FileDescriptor listener{}; ///< with `given`
};

bool waitForInput(const FileDescriptor& connection) {
    pollfd readable{connection.get(), POLLIN, 0};
    return ::poll(&readable, 1, static_cast<int>(std::chrono::milliseconds(patience).count())) != 0;
}

/// Tells the process that listens at `name` of this start and waits until it has heard; one that takes longer
/// than we have patience will hear of it when it gets to it.
Answer handOver(const FileDescriptor& directory, const std::string& name) {
    Answer answer{.connection = newSocket(0)};
    const sockaddr_un address = addressOf(directory, name);
    const int socket = answer.connection.get();
    if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        return answer;
    if (!waitForInput(answer.connection)) {
        answer.kind = Answer::Kind::heard;
        return answer;
    }
    auto received = receiveWithDescriptors(socket);
    if (!received)
        return answer;
    answer.kind = Answer::Kind::heard;
    if (received->message == theRight && received->descriptors.size() == 2) {
        answer.kind = Answer::Kind::given;
        answer.lock = std::move(received->descriptors[0]);
        answer.listener = std::move(received->descriptors[1]);
    }
    return answer;
}

/// The process at the other end when it is this user's; 0 otherwise.
pid_t peerOf(int connection) {
    ucred peer{};
    socklen_t size = sizeof peer;
    const bool known = ::getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0;
    return known && peer.uid == ::geteuid() ? peer.pid : 0;
}

} // namespace

struct SingleInstance::Right {
    /// Answers every start that waits.
    void answerStarts();
    /// True when the start was the successor's and has the right now.
    bool giveIfDue(FileDescriptor& connection);

    FileDescriptor directory;
    FileDescriptor lock;
    FileDescriptor listener;
    std::string name; ///< of the lock and the socket, without their suffixes
    std::unique_ptr<QSocketNotifier> notifier{};
    std::function<void()> onHandOver{};
    pid_t successor = 0; ///< 0: none
    std::function<void()> given{};
    /// Open until this process ends, which is how the successor hears of that; none while we have the right.
    FileDescriptor toSuccessor{};
};

Result<std::optional<SingleInstance>> SingleInstance::claim(const fs::path& directoryPath,
                                                            std::string_view session) {
    FileDescriptor directory(::open(directoryPath.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!directory)
        return posixFailure("Opening the directory " + directoryPath.string());
    const std::string name = std::string(prefix) + std::string(session);
    const std::string socketName = name + socketSuffix;
    auto lock = openLock(directory, name + lockSuffix);
    if (!lock)
        return failure(lock.error());

    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (std::chrono::steady_clock::now() < deadline) {
        if (::flock(lock->get(), LOCK_EX | LOCK_NB) == 0) {
            auto listener = listenAt(directory, socketName);
            if (!listener)
                return failure(listener.error());
            return SingleInstance(std::make_unique<Right>(Right{.directory = std::move(directory),
                                                                .lock = std::move(*lock),
                                                                .listener = std::move(*listener),
                                                                .name = name}));
        }
        auto answer = handOver(directory, socketName);
        if (answer.kind == Answer::Kind::heard)
            return std::nullopt;
        if (answer.kind == Answer::Kind::given) {
            // What our predecessor holds of the desktop, as the hotkey, is free only then.
            waitForInput(answer.connection);
            return SingleInstance(std::make_unique<Right>(Right{.directory = std::move(directory),
                                                                .lock = std::move(answer.lock),
                                                                .listener = std::move(answer.listener),
                                                                .name = name}));
        }
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

SingleInstance::SingleInstance(std::unique_ptr<Right> right) : right_(std::move(right)) {}

SingleInstance::SingleInstance(SingleInstance&&) noexcept = default;

SingleInstance::~SingleInstance() {
    // The lock file stays: removing it would let two processes lock two files of the same name.
    if (right_ && !right_->toSuccessor)
        ::unlinkat(right_->directory.get(), (right_->name + socketSuffix).c_str(), 0);
}

bool SingleInstance::isOnlySession() const {
    const auto& directory = right_->directory;
    std::error_code error;
    // By way of the descriptor: the path may lead elsewhere by now.
    for (const auto& entry : fs::directory_iterator(procPathOf(directory), error)) {
        const std::string name = entry.path().filename();
        if (!name.starts_with(prefix) || !name.ends_with(lockSuffix) || name == right_->name + lockSuffix)
            continue;
        const FileDescriptor other(
            ::openat(directory.get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
        // A start of that session that looks at the same moment tries again.
        if (other && ::flock(other.get(), LOCK_SH | LOCK_NB) != 0)
            return false;
    }
    return !error;
}

void SingleInstance::onHandOver(std::function<void()> handler) {
    right_->onHandOver = std::move(handler);
    right_->notifier = std::make_unique<QSocketNotifier>(right_->listener.get(), QSocketNotifier::Read);
    QObject::connect(right_->notifier.get(), &QSocketNotifier::activated,
                     [right = right_.get()] { right->answerStarts(); });
}

void SingleInstance::giveTo(pid_t successor, std::function<void()> given) {
    right_->successor = successor;
    right_->given = std::move(given);
}

void SingleInstance::Right::answerStarts() {
    bool any = false;
    for (;;) {
        FileDescriptor connection(::accept4(listener.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
        if (!connection)
            break;
        if (giveIfDue(connection))
            return; // whoever else waits is the new holder's to answer
        if (peerOf(connection.get()) != 0)
            any = ::send(connection.get(), &acknowledgement, 1, MSG_NOSIGNAL) == 1 || any;
    }
    if (any)
        onHandOver();
}

bool SingleInstance::Right::giveIfDue(FileDescriptor& connection) {
    if (successor == 0 || peerOf(connection.get()) != successor)
        return false;
    const std::array held{lock.get(), listener.get()};
    if (!sendWithDescriptors(connection.get(), theRight, held))
        return false;
    notifier->setEnabled(false);
    toSuccessor = std::move(connection);
    given();
    return true;
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
