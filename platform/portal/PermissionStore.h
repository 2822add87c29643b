#pragma once

#include <QDBusConnection>
#include <QString>

namespace glimmerly {

enum class StoredPermission { granted, withheld, unknown };

/// Where portals keep what the user allowed which program. Waits for the bus, half a second at most.
class PermissionStore {
public:
    /// `applicationID` is this program's name, as in its desktop file.
    PermissionStore(QDBusConnection bus, QString applicationID);

    /// Whether this program may take pictures of the screen. `withheld` also when the user has not been asked
    /// yet; `unknown` when no store runs or it does not answer.
    [[nodiscard]] StoredPermission screenshot() const;

private:
    QDBusConnection bus_;
    QString applicationID_;
};

} // namespace glimmerly
