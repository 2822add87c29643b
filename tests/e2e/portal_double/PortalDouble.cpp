// Answers what a desktop's portal and permission store are asked, by the INI file that is its argument and
// may change at any time: "screenshot" is what the store says of every program ("yes", "no"; nothing when it
// has no entry), "color-scheme" what the portal's settings say.
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QMap>
#include <QSettings>
#include <QStringList>

namespace {

using Permissions = QMap<QString, QStringList>;

const QString portalPath = "/org/freedesktop/portal/desktop";
const QString settingsName = "org.freedesktop.portal.Settings";
const QString area = "org.freedesktop.appearance";

class PortalDouble : public QDBusVirtualObject {
public:
    PortalDouble(const QDBusConnection& bus, const QString& file)
        : bus_(bus), file_(file), scheme_(scheme()) {
        watcher_.addPath(QFileInfo(file).path());
        connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this] { announce(); });
    }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() == "Lookup")
            return connection.send(lookUp(message));
        if (message.interface() == settingsName && message.member() == "Read") {
            const QVariant value = QVariant::fromValue(QDBusVariant(scheme()));
            return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(value))));
        }
        return false;
    }

private:
    [[nodiscard]] QDBusMessage lookUp(const QDBusMessage& question) const {
        const QString answer = setting("screenshot").toString();
        if (question.arguments() != QVariantList{"screenshot", "screenshot"} || answer.isEmpty())
            return question.createErrorReply("org.freedesktop.portal.Error.NotFound", "No entry");
        const Permissions permissions{{"app.glimmerly.Glimmerly", {answer}}, {"another.program", {"no"}}};
        return question.createReply({QVariant::fromValue(permissions), QVariant::fromValue(QDBusVariant(0))});
    }
    [[nodiscard]] QVariant setting(const QString& key) const {
        return QSettings(file_, QSettings::IniFormat).value(key);
    }
    [[nodiscard]] uint scheme() const { return setting("color-scheme").toUInt(); }

    void announce() {
        const uint now = scheme();
        if (now == scheme_)
            return;
        scheme_ = now;
        auto signal = QDBusMessage::createSignal(portalPath, settingsName, "SettingChanged");
        signal << area << "color-scheme" << QVariant::fromValue(QDBusVariant(scheme_));
        bus_.send(signal);
    }

    QDBusConnection bus_;
    QString file_;
    QFileSystemWatcher watcher_;
    uint scheme_;
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    qDBusRegisterMetaType<Permissions>();
    auto bus = QDBusConnection::sessionBus();
    PortalDouble portal(bus, QCoreApplication::arguments().at(1));
    bus.registerVirtualObject("/", &portal, QDBusConnection::SubPath);
    const bool ready = bus.registerService("org.freedesktop.impl.portal.PermissionStore") &&
                       bus.registerService("org.freedesktop.portal.Desktop");
    return ready ? QCoreApplication::exec() : 1;
}
