#include "overlay/ScreenshotOverlayController.h"

#include "base/NotificationCenter.h"
#include "capture/service/TargetScreen.h"
#include "diagnostics/GlimmerlyLog.h"
#include "overlay/canvas/OverlayCanvasView.h"
#include "overlay/export/OverlayCanvasSelectionExport.h"
#include "platform/MainQueue.h"
#include "platform/OverlayWindows.h"
#include "platform/Platform.h"
#include "platform/SavePanel.h"
#include "platform/Workspace.h"
#include "telemetry/TelemetrySink.h"

#include <QDateTime>
#include <QKeyEvent>
#include <QLocale>
#include <QPointer>
#include <QWindow>

#include <unistd.h>

#include <cerrno>
#include <ctime>

namespace glimmerly {

namespace {
/// How far the overlay's window is taller than the screen, in points.
constexpr double overlayExtraHeight = 2;

std::string_view telemetrySpelling(DismissalSource source) {
    switch (source) {
    case DismissalSource::esc:
        return "esc";
    case DismissalSource::close:
        return "close";
    case DismissalSource::copy:
        return "copy";
    case DismissalSource::save:
        return "save";
    }
    return {};
}

} // namespace

ScreenshotOverlayController::ScreenshotOverlayController(OverlayControllerServices services)
    : services_(std::move(services)) {}

ScreenshotOverlayController::~ScreenshotOverlayController() = default;

ScreenshotOverlayController& ScreenshotOverlayController::shared() {
    static auto* const instance = [] {
        auto& platform = Platform::current();
        return new ScreenshotOverlayController({.screens = platform.screens,
                                                .workspace = platform.workspace,
                                                .overlayWindows = platform.overlayWindows,
                                                .pasteboard = platform.pasteboard,
                                                .savePanel = platform.savePanel,
                                                .mainQueue = platform.mainQueue,
                                                .notifications = platform.notifications,
                                                .telemetry = TelemetrySink::shared(),
                                                .bundleIdentifier = platform.bundle.identifier});
    }();
    return *instance;
}

void ScreenshotOverlayController::presentOverlay(const std::filesystem::path& captureImageURL) {
    closeOverlay();
    captureImageURL_ = captureImageURL;
    GlimmerlyLog::notice(log_category::overlay, "Screenshot overlay presenting",
                         {{"capture", captureImageURL.filename().string()}});
    const auto screen = targetScreen(services_.screens);
    if (!screen) {
        closeOverlay();
        return;
    }
    services_.notifications.post(OverlayWindows::willShowNotification);
    createWindow(*screen, captureImageURL);
    rememberApplicationToRestore();
    makeWindowKey();
    overlayOpenDate_ = services_.clock();
    services_.telemetry.track(telemetry_event::overlayOpened);
    installKeyDownMonitor();
}

void ScreenshotOverlayController::createWindow(const Screen& screen,
                                               const std::filesystem::path& captureImageURL) {
    Rect frame = screen.frame;
    frame.height += overlayExtraHeight;
    window_ = windowFor(screen, frame);
    auto canvas =
        std::make_unique<OverlayCanvasView>(captureImageURL, Rect{0, 0, frame.width, frame.height},
                                            OverlayCanvasServices{services_.screens, services_.pasteboard});
    const QPointer<ScreenshotOverlayController> controller(this);
    const auto whileAlive = [controller](auto action) {
        return [controller, action] {
            if (controller)
                action(*controller);
        };
    };
    canvas->onClose = whileAlive([](auto& self) { self.dismissOverlay(DismissalSource::close); });
    canvas->onDownload = whileAlive([](auto& self) { self.saveSelection(); });
    canvas->onDone = whileAlive([](auto& self) { self.copyAndDismiss(); });
    window_->setContentView(std::move(canvas));
}

/// The window of the overlay before, when it was for the same screen as that is now.
std::unique_ptr<OverlayKeyWindow> ScreenshotOverlayController::windowFor(const Screen& screen, Rect frame) {
    auto spare = std::exchange(spare_, {screen, nullptr});
    if (spare.window && spare.screen == screen)
        return std::move(spare.window);
    auto window = std::make_unique<OverlayKeyWindow>();
    services_.overlayWindows.prepare(*window, screen, frame);
    return window;
}

void ScreenshotOverlayController::rememberApplicationToRestore() {
    auto frontmost = services_.workspace.frontmostApplication();
    const bool isThisProgram = frontmost && frontmost->bundleIdentifier() == services_.bundleIdentifier;
    appToRestoreAfterOverlay_ = isThisProgram ? nullptr : std::move(frontmost);
}

void ScreenshotOverlayController::makeWindowKey() {
    services_.overlayWindows.makeKeyAndOrderFront(*window_);
    window_->contentView()->setFocus();
}

void ScreenshotOverlayController::installKeyDownMonitor() {
    keyDownMonitor_ = std::make_unique<KeyDownMonitor>(
        [controller = QPointer(this)](const QKeyEvent& event, const QObject& window) {
            return controller ? controller->handleKeyDown(event, window) : KeyDownMonitor::Verdict::pass;
        });
}

bool ScreenshotOverlayController::isOverlays(const QObject& window) const {
    const QObject* own = window_->windowHandle();
    return own == &window;
}

KeyDownMonitor::Verdict ScreenshotOverlayController::handleKeyDown(const QKeyEvent& event,
                                                                   const QObject& window) {
    if (!window_)
        return KeyDownMonitor::Verdict::pass;
    // By what the layout makes of the key, not by its position: many have moved Escape to Caps Lock.
    const bool isReturn = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (event.key() != Qt::Key_Escape && (!isReturn || window_->firstResponderIsTextView()))
        return isOverlays(window) ? window_->performKeyEquivalent(event) : KeyDownMonitor::Verdict::pass;
    if (event.isAutoRepeat()) // a key held down is pressed once
        return KeyDownMonitor::Verdict::swallow;
    if (isReturn)
        copyAndDismiss();
    else
        dismissOverlay(DismissalSource::esc);
    return KeyDownMonitor::Verdict::swallow;
}

bool ScreenshotOverlayController::copyAndDismiss() {
    if (!window_ || window_->firstResponderIsTextView())
        return false;
    if (!window_->contentView()->writeCroppedImageToPasteboard()) {
        GlimmerlyLog::error(
            log_category::overlay,
            "Copy selection to pasteboard returned false (missing crop bitmap or pasteboard write failed)");
        return false;
    }
    dismissOverlay(DismissalSource::copy);
    return true;
}

void ScreenshotOverlayController::saveSelection() {
    if (!window_)
        return;
    const auto image = window_->contentView()->croppedSelectionImage();
    if (!image) {
        GlimmerlyLog::error(log_category::overlay, "Save requested without a valid selection bitmap");
        return;
    }
    const auto dismissal = dismissalProperties(std::nullopt); // the time in the panel does not count
    closeOverlay();
    services_.mainQueue.post([controller = QPointer(this), image = *image, dismissal] {
        if (controller)
            controller->askWhereToSave(image, dismissal);
    });
}

void ScreenshotOverlayController::askWhereToSave(const Bitmap& image, const TelemetryProperties& dismissal) {
    const auto answer = services_.savePanel.runModal({defaultCaptureFileName(services_.clock())});
    if (answer.response == SavePanelResponse::cancel)
        return;
    if (!answer.location) {
        GlimmerlyLog::error(log_category::overlay,
                            "Save sheet completed without a URL despite non-cancel response");
        return;
    }
    std::filesystem::path destination = *answer.location;
    if (const auto extension = destination.extension(); extension.empty() || extension == ".")
        destination.replace_extension("png");
    if (writeCroppedImagePNG(image, destination))
        services_.telemetry.track(telemetry_event::overlayDismissed,
                                  dismissalProperties(DismissalSource::save, dismissal));
    else
        GlimmerlyLog::error(log_category::overlay, "writeCroppedImagePNG returned false after save panel",
                            {{"destination", destination.filename().string()}});
}

std::string defaultCaptureFileName(WallTime now) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    const QDateTime local = QDateTime::fromSecsSinceEpoch(seconds);
    const QString moment = QLocale().toString(local, QStringLiteral("yyyy-MM-dd HH.mm.ss"));
    return "Glimmerly Capture " + moment.toStdString() + ".png";
}

TelemetryProperties ScreenshotOverlayController::dismissalProperties(std::optional<DismissalSource> source,
                                                                     TelemetryProperties base) const {
    if (source)
        base.insert_or_assign("source", telemetrySpelling(*source));
    if (overlayOpenDate_)
        base.try_emplace("overlay_active_ms", clampedMilliseconds(*overlayOpenDate_, services_.clock()));
    return base;
}

void ScreenshotOverlayController::dismissOverlay(DismissalSource source) {
    services_.telemetry.track(telemetry_event::overlayDismissed, dismissalProperties(source));
    closeOverlay();
}

void ScreenshotOverlayController::closeOverlay() {
    overlayOpenDate_.reset();
    keyDownMonitor_.reset();
    const bool hadKeyboard = closeWindow();
    const auto application = std::exchange(appToRestoreAfterOverlay_, nullptr);
    if (application && hadKeyboard)
        application->activateAllWindows();
    deleteCaptureFile();
}

/// Whether it had the keyboard. Without it the user is in another program by now, on another display.
bool ScreenshotOverlayController::closeWindow() {
    if (!window_)
        return false;
    const bool hadKeyboard = services_.overlayWindows.orderOut(*window_);
    window_->setContentView(nullptr);
    spare_.window = std::move(window_);
    return hadKeyboard;
}

void ScreenshotOverlayController::deleteCaptureFile() {
    const auto file = std::exchange(captureImageURL_, std::nullopt);
    if (file && ::unlink(file->c_str()) != 0) {
        const int reason = errno;
        GlimmerlyLog::warning(log_category::overlay, "Temp capture PNG could not be deleted",
                              {{"path", file->filename().string()}}, Error::posix(reason, "unlink"));
    }
}

} // namespace glimmerly
