#pragma once

#include "base/Bitmap.h"
#include "base/Clock.h"
#include "capture/service/OverlayPresenter.h"
#include "overlay/KeyDownMonitor.h"
#include "overlay/OverlayKeyWindow.h"
#include "platform/Screens.h"
#include "telemetry/TelemetryValue.h"

#include <QObject>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace glimmerly {

class MainQueue;
class NotificationCenter;
class OverlayWindows;
class Pasteboard;
class RunningApplication;
class SavePanel;
class Telemetry;
class Workspace;

/// What the controller uses of the desktop.
struct OverlayControllerServices {
    const Screens& screens;
    Workspace& workspace;
    OverlayWindows& overlayWindows;
    Pasteboard& pasteboard;
    SavePanel& savePanel;
    MainQueue& mainQueue;
    NotificationCenter& notifications;
    Telemetry& telemetry;
    std::optional<std::string> bundleIdentifier;
    WallClock clock = systemClock();
};

/// What took an overlay down.
enum class DismissalSource {
    esc,   ///< the Escape key
    close, ///< the toolbar's close button
    copy,  ///< Done, after the selection was copied
    save,  ///< Download, after the file was written
};

/// Shows a finished capture over its whole display and ends that overlay again. While it is open the
/// controller owns the capture file and remembers which application to go back to. Main thread only.
class ScreenshotOverlayController : public QObject, public OverlayPresenter {
public:
    explicit ScreenshotOverlayController(OverlayControllerServices services);
    ~ScreenshotOverlayController() override;

    [[nodiscard]] static ScreenshotOverlayController& shared();

    /// Shows the overlay for the capture file at `captureImageURL` on the display under the mouse, in place
    /// of any earlier one. Without a display there is nothing to show it on: the file is deleted at once.
    void presentOverlay(const std::filesystem::path& captureImageURL) override;
    /// Takes the overlay down, activates the application remembered and deletes the capture file. Does
    /// nothing when no overlay is open.
    void closeOverlay() override;
    /// Closes and counts it as the user's wish, by that means.
    void dismissOverlay(DismissalSource source);
    /// Copies the selection to the pasteboard and closes. False, with the overlay open as it was, while text
    /// is being typed or when the copy fails.
    bool copyAndDismiss();
    /// Makes the picture of the selection, closes, and asks where to save it. Without a selection the overlay
    /// stays open as it is.
    void saveSelection();

    /// The open overlay's window; none between overlays.
    [[nodiscard]] OverlayKeyWindow* window() const { return window_.get(); }

private:
    /// A window between overlays. To make its memory anew takes longer than everything else that shows an
    /// overlay.
    struct SpareWindow {
        Screen screen;
        std::unique_ptr<OverlayKeyWindow> window;
    };

    void createWindow(const Screen& screen, const std::filesystem::path& captureImageURL);
    std::unique_ptr<OverlayKeyWindow> windowFor(const Screen& screen, Rect frame);
    bool closeWindow();
    void rememberApplicationToRestore();
    void makeWindowKey();
    void installKeyDownMonitor();
    [[nodiscard]] bool isOverlays(const QObject& window) const;
    KeyDownMonitor::Verdict handleKeyDown(const QKeyEvent& event, const QObject& window);
    [[nodiscard]] TelemetryProperties dismissalProperties(std::optional<DismissalSource> source,
                                                          TelemetryProperties base = {}) const;
    void askWhereToSave(const Bitmap& image, const TelemetryProperties& dismissal);
    void deleteCaptureFile();

    OverlayControllerServices services_;
    std::unique_ptr<OverlayKeyWindow> window_;
    SpareWindow spare_;
    std::optional<std::filesystem::path> captureImageURL_;
    std::unique_ptr<KeyDownMonitor> keyDownMonitor_;
    std::optional<WallTime> overlayOpenDate_;
    std::shared_ptr<RunningApplication> appToRestoreAfterOverlay_;
};

/// "Glimmerly Capture ", the local date and time, and ".png".
[[nodiscard]] std::string defaultCaptureFileName(WallTime now);

} // namespace glimmerly
