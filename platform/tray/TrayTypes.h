#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QIcon>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace glimmerly {

/// A picture on the bus, "(iiay)": 32 bits a pixel, alpha first, rows from the top.
struct TrayPixmap {
    int width = 0;  ///< pixels
    int height = 0; ///< pixels
    QByteArray pixels;
};
using TrayPixmaps = QList<TrayPixmap>;

/// "(sa(iiay)ss)"
struct TrayToolTip {
    QString iconName{};
    TrayPixmaps icon{};
    QString title{};
    QString description{};
};

/// A menu item with those below it, "(ia{sv}av)".
struct TrayMenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<TrayMenuLayout> children{};
};

/// "(ia{sv})"
struct TrayMenuProperties {
    int id = 0;
    QVariantMap properties;
};
using TrayMenuPropertiesList = QList<TrayMenuProperties>;

/// Names of properties that an item no longer has, "(ias)".
struct TrayMenuKeys {
    int id = 0;
    QStringList keys;
};
using TrayMenuKeysList = QList<TrayMenuKeys>;

/// What was done to an item, "(isvu)".
struct TrayMenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint timestamp = 0;
};
using TrayMenuEvents = QList<TrayMenuEvent>;

QDBusArgument& operator<<(QDBusArgument& argument, const TrayPixmap& value);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayPixmap& value);
QDBusArgument& operator<<(QDBusArgument& argument, const TrayToolTip& value);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayToolTip& value);
QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuLayout& value);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuLayout& value);
QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuProperties& value);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuProperties& value);
QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuKeys& value);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuKeys& value);
QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuEvent& value);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuEvent& value);

/// Tells Qt how the types above go over the bus; before the first object is put on it.
void registerTrayTypes();

/// `icon` in each of the sizes it lists.
[[nodiscard]] TrayPixmaps trayPixmaps(const QIcon& icon);

} // namespace glimmerly

Q_DECLARE_METATYPE(glimmerly::TrayPixmap)
Q_DECLARE_METATYPE(glimmerly::TrayToolTip)
Q_DECLARE_METATYPE(glimmerly::TrayMenuLayout)
Q_DECLARE_METATYPE(glimmerly::TrayMenuProperties)
Q_DECLARE_METATYPE(glimmerly::TrayMenuKeys)
Q_DECLARE_METATYPE(glimmerly::TrayMenuEvent)
