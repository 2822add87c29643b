#include "platform/tray/StatusNotifierWatch.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace glimmerly {

namespace {

const QString service = "org.kde.StatusNotifierWatcher";
const QString path = "/StatusNotifierWatcher";
constexpr int answerTimeout = 3000; // milliseconds

} // namespace

StatusNotifierWatch::StatusNotifierWatch(const QDBusConnection& bus, std::function<void(Host)> changed)
    : bus_(bus), changed_(std::move(changed)) {
    if (!bus_.isConnected()) {
        QMetaObject::invokeMethod(this, [this] { changed_(Host::absent); }, Qt::QueuedConnection);
        return;
    }
    ownerWatcher_.setConnection(bus_);
    ownerWatcher_.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    ownerWatcher_.addWatchedService(service);
    connect(&ownerWatcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& newOwner) { ownerChanged(newOwner); });
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        bus_.connect(service, path, service, signal, this, SLOT(askForHost()));
    askForHost();
}

StatusNotifierWatch::~StatusNotifierWatch() = default;

void StatusNotifierWatch::registerItem() {
    auto call = QDBusMessage::createMethodCall(service, path, service, "RegisterStatusNotifierItem");
    call << bus_.baseService();
    bus_.asyncCall(call);
}

void StatusNotifierWatch::ownerChanged(const QString& newOwner) {
    question_.reset();
    if (newOwner.isEmpty())
        changed_(Host::absent);
    else
        askForHost();
}

/// A watcher may run with no panel yet to show what it collects.
void StatusNotifierWatch::askForHost() {
    auto call = QDBusMessage::createMethodCall(service, path, "org.freedesktop.DBus.Properties", "Get");
    call << service << "IsStatusNotifierHostRegistered";
    call.setAutoStartService(false);
    // In place of an earlier question that is still open.
    question_ = std::make_unique<QDBusPendingCallWatcher>(bus_.asyncCall(call, answerTimeout));
    connect(question_.get(), &QDBusPendingCallWatcher::finished, this, [this] {
        const QDBusPendingReply<QDBusVariant> reply = *question_;
        const bool hosted = !reply.isError() && reply.value().variant().toBool();
        changed_(hosted ? Host::present : Host::absent);
    });
}

} // namespace glimmerly
