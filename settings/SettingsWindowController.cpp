#include "settings/SettingsWindowController.h"

#include "base/NotificationCenter.h"
#include "bugreports/BugReportClient.h"
#include "capture/permission/ScreenRecordingPermission.h"
#include "platform/MainQueue.h"
#include "platform/Platform.h"
#include "settings/updates/AppUpdater.h"
#include "settings/updates/UpdaterViewModel.h"
#include "ui/QtConversions.h"
#include "ui/UiLayout.h"
#include "ui/WindowPlacement.h"

namespace glimmerly {

namespace {

constexpr QSize contentSize(720, 600); // points
constexpr Qt::WindowFlags windowFlags = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                        Qt::WindowCloseButtonHint | Qt::WindowMinimizeButtonHint;

} // namespace

SettingsWindowController& SettingsWindowController::shared() {
    static auto* const instance = [] {
        auto& platform = Platform::current();
        return new SettingsWindowController(
            {.bundle = platform.bundle,
             .application = platform.application,
             .mainQueue = platform.mainQueue,
             .notifications = platform.notifications,
             .recorder = HotkeyRecorderServices::shared(),
             .permission = ScreenRecordingPermission::shared(),
             .links = platform.links,
             .bugReports = BugReportClient::shared(),
             .statusItem = platform.statusItem,
             .updaterViewModel = UpdaterViewModel::shared(),
             .checkForUpdates = [] { AppUpdater::shared().checkForUpdates(); }});
    }();
    return *instance;
}

SettingsWindowController::SettingsWindowController(const SettingsServices& services)
    : services_(services), window_(std::make_unique<QWidget>(nullptr, windowFlags)),
      root_(new GlimmerlyPreferencesRoot(services)),
      self_(std::make_shared<SettingsWindowController*>(this)) {
    window_->setAccessibleName(toQString(settings_text::windowName));
    tightLayout<QVBoxLayout>(window_.get(), 0)->addWidget(root_);
}

SettingsWindowController::~SettingsWindowController() = default;

void SettingsWindowController::show() {
    services_.notifications.post(willShowNotification);
    services_.mainQueue.post([self = std::weak_ptr(self_)] {
        if (const auto controller = self.lock())
            (*controller)->bringForward();
    });
}

void SettingsWindowController::bringForward() {
    window_->setWindowState(window_->windowState() & ~Qt::WindowMinimized);
    if (!window_->isVisible()) // its display may have changed meanwhile
        fitOnDisplay(*window_, contentSize, root_->minimumSize());
    window_->show();
    services_.application.activateIgnoringOtherApps();
    // In front of our other windows too.
    window_->raise();
    window_->activateWindow();
}

} // namespace glimmerly
