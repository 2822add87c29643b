#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <functional>
#include <memory>

class QDBusPendingCallWatcher;

namespace glimmerly {

/// Knows whether something on the session bus shows StatusNotifierItems.
class StatusNotifierWatch : public QObject {
    Q_OBJECT

public:
    enum class Host { absent, present };

    /// `changed` runs once it is known what the bus offers, and whenever that changes; also when one host
    /// takes another's place, because the new one knows no items yet. Without a bus there is no host.
    StatusNotifierWatch(const QDBusConnection& bus, std::function<void(Host)> changed);
    ~StatusNotifierWatch() override;

    /// Tells the host of the item at "/StatusNotifierItem" on this connection.
    void registerItem();

private Q_SLOTS:
    void askForHost();

private:
    void ownerChanged(const QString& newOwner);

    QDBusConnection bus_;
    QDBusServiceWatcher ownerWatcher_;
    std::function<void(Host)> changed_;
    std::unique_ptr<QDBusPendingCallWatcher> question_;
};

} // namespace glimmerly
