#include "platform/portal/PortalAppearance.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>

namespace glimmerly {

namespace {

const QString service = "org.freedesktop.portal.Desktop";
const QString path = "/org/freedesktop/portal/desktop";
const QString settings = "org.freedesktop.portal.Settings";
const QString appearance = "org.freedesktop.appearance";
const QString colorSchemeKey = "color-scheme";
constexpr uint prefersDark = 1;
constexpr uint prefersLight = 2;

ColorScheme schemeOfQtsColors() {
    const QPalette palette = QGuiApplication::palette();
    const bool isDark =
        palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
    return isDark ? ColorScheme::dark : ColorScheme::light;
}

} // namespace

PortalAppearance::PortalAppearance(QDBusConnection bus)
    : bus_(std::move(bus)), startingScheme_(schemeOfQtsColors()), scheme_(startingScheme_) {
    if (!bus_.isConnected())
        return;
    bus_.connect(service, path, settings, "SettingChanged", this, SLOT(settingChanged(QDBusMessage)));
    ask();
}

void PortalAppearance::ask() {
    auto call = QDBusMessage::createMethodCall(service, path, settings, "Read");
    call << appearance << colorSchemeKey;
    auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (!reply.isError())
            setPreference(reply.value().variant());
    });
}

void PortalAppearance::settingChanged(const QDBusMessage& signal) {
    const QVariantList what = signal.arguments();
    if (what.size() == 3 && what[0] == appearance && what[1] == colorSchemeKey)
        setPreference(what[2]);
}

void PortalAppearance::setPreference(const QVariant& value) {
    // `Read` wraps its answer once more.
    const QVariant plain = value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value;
    ColorScheme scheme = startingScheme_;
    if (plain.toUInt() == prefersDark)
        scheme = ColorScheme::dark;
    else if (plain.toUInt() == prefersLight)
        scheme = ColorScheme::light;
    if (scheme == scheme_)
        return;
    scheme_ = scheme;
    observers_.announce();
}

} // namespace glimmerly
