#include "platform/qt/QtApplication.h"

#include "platform/qt/KeyNames.h"
#include "platform/qt/QtImages.h"
#include "ui/QtConversions.h"

#include <QApplication>
#include <QIcon>
#include <QWindow>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ranges>
#include <thread>
#include <utility>

namespace glimmerly {

namespace {

/// Runs the delegate's last callback once, whichever way the process ends. Qt answers a lost display
/// connection with exit(1) deep in the event loop (6.4), so the main loop's return is not the only way out.
class Termination {
public:
    static void arm(ApplicationDelegate& delegate) {
        pending = &delegate;
        mainThread = std::this_thread::get_id();
        std::atexit([] {
            if (std::this_thread::get_id() == mainThread)
                run();
        });
    }
    static void run() {
        if (auto* delegate = std::exchange(pending, nullptr))
            delegate->applicationWillTerminate();
    }

private:
    static inline ApplicationDelegate* pending = nullptr;
    static inline std::thread::id mainThread;
};

} // namespace

/// The session's end arrives as a quit event, and Qt would close every window first and stay if one refused.
class QtApplication::Toolkit : public QApplication {
public:
    using QApplication::QApplication;

    KeyNames keyNames;

    bool event(QEvent* event) override {
        if (event->type() == QEvent::Quit) {
            exit(0);
            return true;
        }
        return QApplication::event(event);
    }
};

QtApplication::QtApplication(char* program, const BundleInfo& bundle)
    : arguments_{program, platformOption_.data(), platformName_.data(), nullptr} {
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QGuiApplication::setDesktopFileName(toQString(bundle.identifier.value_or("")));
    QCoreApplication::setApplicationName(toQString(bundle.applicationName()));
    toolkit_ = std::make_unique<Toolkit>(argumentCount_, arguments_.data());
    QCoreApplication::installTranslator(&toolkit_->keyNames);
    if (const auto icon = QtImages().applicationIcon())
        QGuiApplication::setWindowIcon(*icon);
}

QtApplication::~QtApplication() = default;

int QtApplication::run(ApplicationDelegate& delegate) {
    Termination::arm(delegate);
    delegate.applicationWillFinishLaunching();
    // From within the loop, so that ending it there works.
    QMetaObject::invokeMethod(
        toolkit_.get(), [&delegate] { delegate.applicationDidFinishLaunching(); }, Qt::QueuedConnection);
    const int status = QCoreApplication::exec();
    Termination::run();
    return status;
}

void QtApplication::setActivationPolicy(ActivationPolicy policy) {
    // No window of an accessory keeps it alive; windows that it does open are listed like any other, because
    // the task list is how people find a covered window here.
    QGuiApplication::setQuitOnLastWindowClosed(policy == ActivationPolicy::regular);
}

void QtApplication::activateIgnoringOtherApps() {
    // The one that the user is in, or else the newest, and no other: it must not end up below one of these.
    // The icon in the X server's tray and overlays are no windows to be brought forward.
    const auto canComeForward = [](const QWindow* window) {
        return window->isVisible() && !window->flags().testFlag(Qt::BypassWindowManagerHint);
    };
    QWindow* wanted = QGuiApplication::focusWindow();
    if (wanted == nullptr || !canComeForward(wanted)) {
        const auto windows = QGuiApplication::topLevelWindows();
        const auto newestFirst = std::views::reverse(windows);
        const auto newest = std::ranges::find_if(newestFirst, canComeForward);
        wanted = newest == newestFirst.end() ? nullptr : *newest;
    }
    if (wanted == nullptr)
        return;
    wanted->raise();
    wanted->requestActivate();
}

void QtApplication::terminate() {
    // Not quit(): that asks every window first.
    QCoreApplication::exit(0);
}

void QtApplication::onReopen(std::function<void()> handler) {
    reopenHandler_ = std::move(handler);
    if (std::exchange(reopening_, Reopening::none) == Reopening::awaitsHandler)
        reopen();
}

void QtApplication::openNewInstance(Completion completion) {
    if (newInstance_)
        newInstance_(std::move(completion));
    else
        completion(Error::posix(ENOSYS, "Starting the program anew"));
}

void QtApplication::openSuccessor(const std::filesystem::path& program, Completion completion) {
    if (relaunch_)
        relaunch_(program, std::move(completion));
    else
        completion(Error::posix(ENOSYS, "Starting the program anew"));
}

void QtApplication::reopen() {
    if (reopenHandler_)
        reopenHandler_();
    else
        reopening_ = Reopening::awaitsHandler;
}

} // namespace glimmerly
