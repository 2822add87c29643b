#pragma once

#include <QDBusConnection>
#include <QString>

#include <chrono>

namespace glimmerly {

enum class StoredPermission { granted, withheld, notAsked, unknown };

/// Where portals keep what the user allowed which program.
class PermissionStore {
public:
    /// `applicationID` is this program's name, as in its desktop file.
    PermissionStore(QDBusConnection bus, QString applicationID);

    /// Whether this program may take pictures of the screen. Waits for the bus until `limit`; `unknown` when
    /// no store runs or it does not answer by then.
    [[nodiscard]] StoredPermission screenshot(std::chrono::milliseconds limit) const;

private:
    QDBusConnection bus_;
    QString applicationID_;
};

} // namespace glimmerly
