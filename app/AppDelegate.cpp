#include "app/AppDelegate.h"

#include "app/ScreenshotRequests.h"
#include "app/StatusItemController.h"
#include "capture/onboarding/PermissionsWindowController.h"
#include "diagnostics/GlimmerlyLog.h"
#include "hotkeys/GlobalHotkeyController.h"
#include "overlay/ScreenshotOverlayController.h"
#include "platform/HttpClient.h"
#include "platform/Platform.h"
#include "platform/Updates.h"
#include "settings/SettingsWindowController.h"
#include "settings/updates/AppUpdater.h"
#include "telemetry/TelemetrySink.h"
#include "ui/FollowAppearance.h"

namespace glimmerly {

namespace {

void logFileLocation() {
    if (const auto location = GlimmerlyLog::eventsURL())
        GlimmerlyLog::debug(log_category::logging, "Structured log file path",
                            {{"path", location->string()}});
    else
        GlimmerlyLog::warning(log_category::logging,
                              "Structured log file path unavailable (setup may have failed)");
}

} // namespace

void AppDelegate::applicationWillFinishLaunching() {
    GlimmerlyLog::notice(log_category::appLifecycle, "applicationWillFinishLaunching");
    Platform::current().application.setActivationPolicy(ActivationPolicy::accessory);
    colors_ = followAppearance(Platform::current().appearance);
}

void AppDelegate::applicationDidFinishLaunching() {
    GlimmerlyLog::notice(log_category::appLifecycle, "applicationDidFinishLaunching");
    logFileLocation();
    (void)AppUpdater::shared(); // which starts the updater
    StatusItemController::shared().installStatusItem();
    GlobalHotkeyController::shared().start([] { requestScreenshot(ScreenshotRequestSource::hotkey); });
    PermissionsWindowController::shared().showIfNeeded();
    // A desktop without a status area leaves starting the program again as the way in. An open overlay covers
    // everything, the window too.
    Platform::current().application.onReopen([] {
        if (!ScreenshotOverlayController::shared().window())
            SettingsWindowController::shared().show();
    });
    TelemetrySink::shared().track(telemetry_event::appLaunch);
    Platform::current().updates.applicationDidFinishLaunching();
}

void AppDelegate::applicationWillTerminate() {
    GlimmerlyLog::notice(log_category::appLifecycle, "applicationWillTerminate");
    TelemetrySink::shared().flushSynchronously();
    GlimmerlyLog::flush();
    GlobalHotkeyController::shared().shutdown();
    // An overlay that is still open takes its capture file with it.
    ScreenshotOverlayController::shared().closeOverlay();
    // A request that is still under way must not outlive what it uses.
    Platform::current().http.stop();
    Platform::current().updates.applicationWillTerminate();
    GlimmerlyLog::flush(); // what became of an update that waited for this
}

} // namespace glimmerly
