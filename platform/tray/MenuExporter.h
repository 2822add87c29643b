#pragma once

#include "platform/tray/TrayTypes.h"

#include <QDBusConnection>
#include <QDBusVariant>
#include <QMenu>
#include <QObject>
#include <QPointer>

namespace glimmerly {

/// A menu without submenus as an object on the session bus, for a panel that draws it. It follows the menu's
/// items and triggers them. The members that start with a capital are called by the panel; an item's number
/// is its place in the menu, counted from 1, and 0 is the menu itself.
class MenuExporter : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath)

public:
    /// The items of `menu` must be complete.
    MenuExporter(const QDBusConnection& bus, QString path, QMenu& menu);
    ~MenuExporter() override;

    [[nodiscard]] uint version() const { return 3; }
    [[nodiscard]] QString status() const { return "normal"; }
    [[nodiscard]] QString textDirection() const;
    [[nodiscard]] QStringList iconThemePath() const { return {}; }

public Q_SLOTS:
    uint GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                   glimmerly::TrayMenuLayout& layout);
    glimmerly::TrayMenuPropertiesList GetGroupProperties(const QList<int>& ids,
                                                         const QStringList& propertyNames);
    QDBusVariant GetProperty(int id, const QString& name);
    void Event(int id, const QString& eventId, const QDBusVariant& data, uint timestamp);
    QList<int> EventGroup(const glimmerly::TrayMenuEvents& events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors);

Q_SIGNALS:
    void ItemsPropertiesUpdated(const glimmerly::TrayMenuPropertiesList& updated,
                                const glimmerly::TrayMenuKeysList& removed);
    void LayoutUpdated(uint revision, int parent);

private:
    [[nodiscard]] QAction* itemAt(int id) const;
    [[nodiscard]] QVariantMap propertiesOf(int id) const;
    void itemChanged(int id);

    QDBusConnection bus_;
    QString path_;
    QPointer<QMenu> menu_;
    QList<QAction*> items_;
};

} // namespace glimmerly
