#include "platform/portal/PermissionStore.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QMap>
#include <QStringList>

namespace glimmerly {

namespace {

const QString service = "org.freedesktop.impl.portal.PermissionStore";
const QString path = "/org/freedesktop/impl/portal/PermissionStore";
const QString table = "screenshot"; // and the one entry in it has the same name
const QString notFound = "org.freedesktop.portal.Error.NotFound";
} // namespace

PermissionStore::PermissionStore(QDBusConnection bus, QString applicationID)
    : bus_(std::move(bus)), applicationID_(std::move(applicationID)) {}

StoredPermission PermissionStore::screenshot(std::chrono::milliseconds limit) const {
    auto call = QDBusMessage::createMethodCall(service, path, service, "Lookup");
    call << table << table;
    const QDBusMessage answer = bus_.call(call, QDBus::Block, static_cast<int>(limit.count()));
    if (answer.type() == QDBusMessage::ErrorMessage)
        return answer.errorName() == notFound ? StoredPermission::notAsked : StoredPermission::unknown;
    if (answer.signature() != "a{sas}v")
        return StoredPermission::unknown;
    const auto permissions = qdbus_cast<QMap<QString, QStringList>>(answer.arguments().at(0));
    // Portals know a program that no session manager started by no name at all.
    const QStringList own = permissions.value(applicationID_, permissions.value(QString()));
    return own.value(0) == "yes" ? StoredPermission::granted : StoredPermission::withheld;
}

} // namespace glimmerly
