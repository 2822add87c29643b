#include "platform/desktop/PrivacySettings.h"

#include "ui/QtConversions.h"

#include <QProcess>
#include <QStringList>

#include <array>

namespace glimmerly {

namespace {

/// What a desktop calls itself in XDG_CURRENT_DESKTOP, and how its settings are opened there.
struct SettingsProgram {
    const char* desktop;
    const char* program;
    const char* page; ///< none: the program has a single window
    bool takesApplication = false;
};

constexpr std::array settingsPrograms{
    SettingsProgram{"GNOME", "gnome-control-center", "applications", true},
    SettingsProgram{"Unity", "unity-control-center", "privacy"},
    SettingsProgram{"KDE", "systemsettings", "kcm_app-permissions"},
    SettingsProgram{"X-Cinnamon", "cinnamon-settings", "privacy"},
    SettingsProgram{"XFCE", "xfce4-settings-manager", nullptr},
    SettingsProgram{"MATE", "mate-control-center", nullptr},
};

QStringList argumentsOf(const SettingsProgram& settings, const std::string& bundleIdentifier) {
    QStringList arguments;
    if (settings.page)
        arguments << settings.page;
    if (settings.takesApplication)
        arguments << toQString(bundleIdentifier);
    return arguments;
}

} // namespace

void openPrivacySettings(const std::string& bundleIdentifier) {
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'));
    for (const auto& settings : settingsPrograms) {
        if (!desktops.contains(QLatin1String(settings.desktop), Qt::CaseInsensitive))
            continue;
        QProcess process;
        process.setProgram(settings.program);
        process.setArguments(argumentsOf(settings, bundleIdentifier));
        process.startDetached();
        return;
    }
}

} // namespace glimmerly
