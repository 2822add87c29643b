#include "platform/tray/TrayTypes.h"

#include <QDBusMetaType>
#include <QImage>
#include <QPixmap>
#include <QtEndian>

namespace glimmerly {

namespace {

TrayPixmap toTrayPixmap(const QImage& picture) {
    const QImage argb = picture.convertToFormat(QImage::Format_ARGB32);
    TrayPixmap pixmap{argb.width(), argb.height(), QByteArray(argb.sizeInBytes(), Qt::Uninitialized)};
    // A row of 32-bit pixels has no padding.
    qToBigEndian<quint32>(argb.constBits(), argb.sizeInBytes() / 4, pixmap.pixels.data());
    return pixmap;
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const TrayPixmap& value) {
    argument.beginStructure();
    argument << value.width << value.height << value.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayPixmap& value) {
    argument.beginStructure();
    argument >> value.width >> value.height >> value.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const TrayToolTip& value) {
    argument.beginStructure();
    argument << value.iconName << value.icon << value.title << value.description;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayToolTip& value) {
    argument.beginStructure();
    argument >> value.iconName >> value.icon >> value.title >> value.description;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuLayout& value) {
    argument.beginStructure();
    argument << value.id << value.properties;
    argument.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const TrayMenuLayout& child : value.children)
        argument << QDBusVariant(QVariant::fromValue(child));
    argument.endArray();
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuLayout& value) {
    argument.beginStructure();
    argument >> value.id >> value.properties;
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        value.children.append(qdbus_cast<TrayMenuLayout>(child.variant()));
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuProperties& value) {
    argument.beginStructure();
    argument << value.id << value.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuProperties& value) {
    argument.beginStructure();
    argument >> value.id >> value.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuKeys& value) {
    argument.beginStructure();
    argument << value.id << value.keys;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuKeys& value) {
    argument.beginStructure();
    argument >> value.id >> value.keys;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuEvent& value) {
    argument.beginStructure();
    argument << value.id << value.name << value.data << value.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuEvent& value) {
    argument.beginStructure();
    argument >> value.id >> value.name >> value.data >> value.timestamp;
    argument.endStructure();
    return argument;
}

void registerTrayTypes() {
    qDBusRegisterMetaType<TrayPixmap>();
    qDBusRegisterMetaType<TrayPixmaps>();
    qDBusRegisterMetaType<TrayToolTip>();
    qDBusRegisterMetaType<TrayMenuLayout>();
    qDBusRegisterMetaType<TrayMenuProperties>();
    qDBusRegisterMetaType<TrayMenuPropertiesList>();
    qDBusRegisterMetaType<TrayMenuKeys>();
    qDBusRegisterMetaType<TrayMenuKeysList>();
    qDBusRegisterMetaType<TrayMenuEvent>();
    qDBusRegisterMetaType<TrayMenuEvents>();
    // The names by which the exported signals and slots call the lists.
    qRegisterMetaType<TrayMenuPropertiesList>("glimmerly::TrayMenuPropertiesList");
    qRegisterMetaType<TrayMenuKeysList>("glimmerly::TrayMenuKeysList");
    qRegisterMetaType<TrayMenuEvents>("glimmerly::TrayMenuEvents");
    qDBusRegisterMetaType<QList<QStringList>>(); // the shortcuts of a menu item
}

TrayPixmaps trayPixmaps(const QIcon& icon) {
    TrayPixmaps pixmaps;
    for (const QSize size : icon.availableSizes())
        pixmaps.append(toTrayPixmap(icon.pixmap(size, 1.0).toImage()));
    return pixmaps;
}

} // namespace glimmerly
