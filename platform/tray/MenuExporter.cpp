#include "platform/tray/MenuExporter.h"

#include "platform/qt/PictureIconEngine.h"
#include "platform/tray/PanelColors.h"

#include <QAction>
#include <QBuffer>
#include <QGuiApplication>
#include <QKeySequence>
#include <QPixmap>

#include <algorithm>
#include <array>
#include <cmath>

namespace glimmerly {

namespace {

constexpr uint revision = 1; // the structure never changes
constexpr int iconSize = 16; // points

struct ModifierName {
    Qt::KeyboardModifier modifier;
    const char* name;
};
/// In the order in which panels show them.
constexpr std::array modifierNames{
    ModifierName{Qt::MetaModifier, "Super"},
    ModifierName{Qt::ControlModifier, "Control"},
    ModifierName{Qt::AltModifier, "Alt"},
    ModifierName{Qt::ShiftModifier, "Shift"},
};

/// A list of shortcuts, each a list of modifiers and a key.
QList<QStringList> busShortcut(const QKeySequence& sequence) {
    const QKeyCombination combination = sequence[0];
    QStringList keys;
    for (const auto& [modifier, name] : modifierNames) {
        if (combination.keyboardModifiers().testFlag(modifier))
            keys << name;
    }
    keys << QKeySequence(combination.key()).toString(QKeySequence::PortableText);
    return {keys};
}

QByteArray pngOf(const QIcon& icon) {
    const QIcon tinted = tintedTemplate(icon, [](QIcon::Mode) { return hostMenuTextColor(); });
    QByteArray png;
    QBuffer buffer(&png);
    tinted.pixmap(QSize(iconSize, iconSize), std::ceil(qGuiApp->devicePixelRatio())).save(&buffer, "PNG");
    return png;
}

/// On the bus it is an underscore that marks the access key.
QString busLabel(QString text) {
    return text.replace('_', "__").replace('&', '_');
}

} // namespace

MenuExporter::MenuExporter(const QDBusConnection& bus, QString path, QMenu& menu)
    : bus_(bus), path_(std::move(path)), menu_(&menu), items_(menu.actions()) {
    registerTrayTypes();
    bus_.registerObject(path_, this,
                        QDBusConnection::ExportAllProperties | QDBusConnection::ExportAllSlots |
                            QDBusConnection::ExportAllSignals);
    for (int id = 1; id <= items_.size(); ++id)
        connect(itemAt(id), &QAction::changed, this, [this, id] { itemChanged(id); });
}

MenuExporter::~MenuExporter() {
    bus_.unregisterObject(path_);
}

QString MenuExporter::textDirection() const {
    return QGuiApplication::isRightToLeft() ? "rtl" : "ltr";
}

uint MenuExporter::GetLayout(int parentId, int recursionDepth, const QStringList&, TrayMenuLayout& layout) {
    layout = {.id = parentId, .properties = propertiesOf(parentId)};
    if (parentId == 0 && recursionDepth != 0) {
        for (int id = 1; id <= items_.size(); ++id)
            layout.children.append({.id = id, .properties = propertiesOf(id)});
    }
    return revision;
}

TrayMenuPropertiesList MenuExporter::GetGroupProperties(const QList<int>& ids, const QStringList&) {
    TrayMenuPropertiesList list;
    const auto add = [&](int id) { list.append({.id = id, .properties = propertiesOf(id)}); };
    std::ranges::for_each(ids, add);
    if (ids.isEmpty()) { // which asks for all
        for (int id = 0; id <= items_.size(); ++id)
            add(id);
    }
    return list;
}

QDBusVariant MenuExporter::GetProperty(int id, const QString& name) {
    // The bus knows no empty variant.
    return QDBusVariant(propertiesOf(id).value(name, ""));
}

void MenuExporter::Event(int id, const QString& eventId, const QDBusVariant&, uint) {
    QAction* item = itemAt(id);
    // Later, so that the panel has its answer before the program acts.
    if (item && eventId == "clicked")
        QMetaObject::invokeMethod(item, &QAction::trigger, Qt::QueuedConnection);
}

QList<int> MenuExporter::EventGroup(const TrayMenuEvents& events) {
    for (const TrayMenuEvent& event : events)
        Event(event.id, event.name, event.data, event.timestamp);
    return {};
}

bool MenuExporter::AboutToShow(int) {
    return false;
}

QList<int> MenuExporter::AboutToShowGroup(const QList<int>&, QList<int>& idErrors) {
    idErrors.clear();
    return {};
}

QAction* MenuExporter::itemAt(int id) const {
    return menu_ ? items_.value(id - 1, nullptr) : nullptr;
}

/// Properties at their default are left out.
QVariantMap MenuExporter::propertiesOf(int id) const {
    if (id == 0)
        return {{"children-display", "submenu"}};
    const QAction* item = itemAt(id);
    if (!item)
        return {};
    if (item->isSeparator())
        return {{"type", "separator"}};
    QVariantMap properties{{"label", busLabel(item->text())}};
    if (!item->isEnabled())
        properties.insert("enabled", false);
    if (!item->icon().isNull())
        properties.insert("icon-data", pngOf(item->icon()));
    if (!item->shortcut().isEmpty())
        properties.insert("shortcut", QVariant::fromValue(busShortcut(item->shortcut())));
    return properties;
}

void MenuExporter::itemChanged(int id) {
    const QVariantMap properties = propertiesOf(id);
    QStringList atDefault;
    for (const char* key : {"enabled", "icon-data", "shortcut"}) {
        if (!properties.contains(key))
            atDefault << key;
    }
    Q_EMIT ItemsPropertiesUpdated({{id, properties}}, {{id, atDefault}});
}

} // namespace glimmerly
