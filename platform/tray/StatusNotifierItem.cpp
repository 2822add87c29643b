#include "platform/tray/StatusNotifierItem.h"

namespace glimmerly {

namespace {
const QString objectPath = "/StatusNotifierItem";
}

StatusNotifierItem::StatusNotifierItem(const QDBusConnection& bus, QString id, const QString& menuPath,
                                       std::function<void()> openMenu)
    : bus_(bus), id_(std::move(id)), menuPath_(menuPath), openMenu_(std::move(openMenu)) {
    registerTrayTypes();
    bus_.registerObject(objectPath, this,
                        QDBusConnection::ExportAllProperties | QDBusConnection::ExportAllSlots |
                            QDBusConnection::ExportAllSignals);
}

StatusNotifierItem::~StatusNotifierItem() {
    bus_.unregisterObject(objectPath);
}

void StatusNotifierItem::setIcon(const QIcon& icon, const QString& title) {
    icon_ = icon;
    title_ = title;
    Q_EMIT NewIcon();
    Q_EMIT NewTitle();
    Q_EMIT NewToolTip();
}

void StatusNotifierItem::Activate(int, int) {
    openMenu_();
}

void StatusNotifierItem::SecondaryActivate(int, int) {}

void StatusNotifierItem::ContextMenu(int, int) {
    openMenu_();
}

void StatusNotifierItem::Scroll(int, const QString&) {}

} // namespace glimmerly
