#include "app/StatusItemController.h"

#include "app/MenuShortcut.h"
#include "app/ScreenshotRequests.h"
#include "diagnostics/GlimmerlyLog.h"
#include "hotkeys/HotkeySettings.h"
#include "platform/Images.h"
#include "platform/KeyboardLayout.h"
#include "platform/OverlayWindows.h"
#include "platform/Platform.h"
#include "platform/StatusBar.h"
#include "settings/SettingsWindowController.h"
#include "settings/updates/AppUpdater.h"
#include "telemetry/TelemetrySink.h"
#include "ui/CommonText.h"

#include <QAction>
#include <QIcon>
#include <QMenu>
#include <QString>
#include <QTextBoundaryFinder>

namespace glimmerly {

namespace {

constexpr SymbolConfiguration menuSymbol{13, SymbolWeight::regular};
constexpr SymbolConfiguration statusSymbol{14, SymbolWeight::medium};

/// What stands in the icon's place when there is no picture at all.
QString titleFor(const std::string& applicationName) {
    const QString name = QString::fromStdString(applicationName);
    return name.isEmpty()
               ? "G"
               : name.left(QTextBoundaryFinder(QTextBoundaryFinder::Grapheme, name).toNextBoundary());
}

} // namespace

StatusItemController& StatusItemController::shared() {
    static auto* const instance = [] {
        auto& platform = Platform::current();
        return new StatusItemController(
            {.bundle = platform.bundle,
             .statusItem = platform.statusItem,
             .images = platform.images,
             .notifications = platform.notifications,
             .hotkeySettings = HotkeySettings::shared(),
             .keyboardLayout = platform.keyboardLayout,
             .application = platform.application,
             .telemetry = TelemetrySink::shared(),
             .requestScreenshot = [] { requestScreenshot(ScreenshotRequestSource::menubar); },
             .showSettings = [] { SettingsWindowController::shared().show(); },
             .checkForUpdates = [] { AppUpdater::shared().checkForUpdates(); }});
    }();
    return *instance;
}

StatusItemController::StatusItemController(StatusItemServices services) : services_(std::move(services)) {}

StatusItemController::~StatusItemController() = default;

void StatusItemController::installStatusItem() {
    services_.statusItem.show();
    services_.statusItem.setMenu(menu());
    hotkeyObservation_ = services_.notifications.observe(HotkeySettings::didChangeNotification,
                                                         [this] { globalHotkeyDidChange(); });
    layoutObservation_ = services_.keyboardLayout.observe([this] { globalHotkeyDidChange(); });
    // An open menu would go on taking the mouse and the keyboard, and be seen by nobody.
    overlayObservation_ =
        services_.notifications.observe(OverlayWindows::willShowNotification, [this] { menu().hide(); });
    setItemImage();
}

QMenu& StatusItemController::menu() {
    if (!menu_)
        buildMenu();
    return *menu_;
}

void StatusItemController::buildMenu() {
    menu_ = std::make_unique<QMenu>();
    menu_->addAction(QString::fromStdString(services_.bundle.versionText()))->setEnabled(false);
    menu_->addSeparator();
    screenshotMenuItem_ = &addItem(common_text::takeScreenshot, "viewfinder.rectangular",
                                   &StatusItemController::takeScreenshot);
    menu_->addSeparator();
    addItem("Settings…", "gearshape", &StatusItemController::openSettings);
    addItem("Check for updates…", "arrow.clockwise.circle", &StatusItemController::checkForUpdates);
    menu_->addSeparator();
    addItem("Quit", "power", &StatusItemController::quit);
    globalHotkeyDidChange();
}

QAction& StatusItemController::addItem(const char* title, std::string_view symbol,
                                       void (StatusItemController::*action)()) {
    QAction& item = *menu_->addAction(QString::fromUtf8(title));
    if (const auto image = services_.images.templateSymbol(symbol, menuSymbol))
        item.setIcon(*image);
    // Some desktops leave both out of menus.
    item.setIconVisibleInMenu(true);
    item.setShortcutVisibleInContextMenu(true);
    item.setEnabled(action != nullptr);
    if (action)
        QObject::connect(&item, &QAction::triggered, &item, [this, action] { (this->*action)(); });
    return item;
}

void StatusItemController::setItemImage() {
    const std::string name = services_.bundle.applicationName();
    auto image = services_.images.templateImage("MenuIcon");
    if (!image)
        image = services_.images.templateSymbol("hare.fill", statusSymbol);
    if (!image)
        image = services_.images.applicationIcon();
    if (image)
        services_.statusItem.setTemplateImage(*image, QString::fromStdString(name));
    else
        services_.statusItem.setTitle(titleFor(name));
}

void StatusItemController::globalHotkeyDidChange() {
    if (!screenshotMenuItem_)
        return;
    const auto& hotkey = services_.hotkeySettings.keyCombination();
    const KeyEquivalent equivalent =
        hotkey ? menuKeyEquivalent(hotkey->key, hotkey->modifiers, services_.keyboardLayout)
               : KeyEquivalent{};
    screenshotMenuItem_->setShortcut(menuShortcut(equivalent));
}

void StatusItemController::takeScreenshot() {
    // The picture must not show the menu from which it was asked for.
    services_.statusItem.whenMenuHasGone(services_.requestScreenshot);
}

void StatusItemController::openSettings() {
    services_.telemetry.track(telemetry_event::statusMenuOpenSettings);
    services_.showSettings();
}

void StatusItemController::checkForUpdates() {
    services_.telemetry.track(telemetry_event::statusMenuCheckForUpdates);
    GlimmerlyLog::debug(log_category::statusMenu, "Check for updates chosen from menu");
    services_.checkForUpdates();
}

void StatusItemController::quit() {
    services_.telemetry.track(telemetry_event::statusMenuQuit);
    GlimmerlyLog::notice(log_category::statusMenu, "Quit chosen from menu");
    services_.application.terminate();
}

} // namespace glimmerly
