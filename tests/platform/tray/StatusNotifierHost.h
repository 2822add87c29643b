#pragma once

#include "platform/tray/TrayTypes.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QStringList>

#include <cstdlib>
#include <string>

namespace glimmerly {

/// A panel that shows StatusNotifierItems and their menus, on a connection of its own to the session bus. It
/// answers while the test's event loop runs, and keeps that running while it asks.
class StatusNotifierHost : public QDBusVirtualObject {
public:
    explicit StatusNotifierHost(const std::string& busAddress = ::getenv("DBUS_SESSION_BUS_ADDRESS"))
        : bus_(QDBusConnection::connectToBus(QString::fromStdString(busAddress), "panel")) {
        registerTrayTypes();
        bus_.registerVirtualObject("/StatusNotifierWatcher", this);
    }
    ~StatusNotifierHost() override {
        stop();
        QDBusConnection::disconnectFromBus("panel");
    }

    void start() { bus_.registerService(watcherName); }
    void stop() {
        bus_.unregisterService(watcherName);
        items.clear();
    }

    [[nodiscard]] QVariant property(const QString& name) {
        auto call =
            QDBusMessage::createMethodCall(items.value(0), "/StatusNotifierItem", propertiesName, "Get");
        call << "org.kde.StatusNotifierItem" << name;
        return first(call).value<QDBusVariant>().variant();
    }
    /// The item's menu with its whole content.
    [[nodiscard]] TrayMenuLayout menu() {
        auto call = menuCall("GetLayout");
        call << 0 << -1 << QStringList();
        const auto answer = bus_.call(call, QDBus::BlockWithGui);
        return qdbus_cast<TrayMenuLayout>(answer.arguments().value(1));
    }
    void click(int id) {
        auto call = menuCall("Event");
        call << id << "clicked" << QVariant::fromValue(QDBusVariant(0)) << 0U;
        bus_.call(call, QDBus::BlockWithGui);
    }

    QStringList items;  ///< the bus names of those that registered since the start, oldest first
    bool hosted = true; ///< false: a watcher collects items, but no panel shows them
    int questions = 0;  ///< whether a panel shows them

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() == "RegisterStatusNotifierItem") {
            items << message.arguments().value(0).toString();
            return connection.send(message.createReply());
        }
        if (message.interface() == propertiesName && ++questions)
            return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(hosted))));
        return false;
    }

private:
    static constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
    static constexpr const char* propertiesName = "org.freedesktop.DBus.Properties";

    QVariant first(const QDBusMessage& call) {
        return bus_.call(call, QDBus::BlockWithGui).arguments().value(0);
    }
    QDBusMessage menuCall(const QString& method) {
        const QString path = property("Menu").value<QDBusObjectPath>().path();
        return QDBusMessage::createMethodCall(items.value(0), path, "com.canonical.dbusmenu", method);
    }

    QDBusConnection bus_;
};

} // namespace glimmerly
