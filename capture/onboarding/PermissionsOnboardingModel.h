#pragma once

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace glimmerly {

class Application;
class MainQueue;
class Preferences;
class ScreenRecordingPermission;
class Telemetry;

/// What the model works with.
struct PermissionsOnboardingServices {
    ScreenRecordingPermission& permission;
    Preferences& preferences;
    Application& application;
    MainQueue& mainQueue;
    Telemetry& telemetry;
};

/// What the onboarding window shows and does: it follows the permission until that is granted. Main thread
/// only.
class PermissionsOnboardingModel : public QObject {
public:
    /// True once the permission was found, false when the window was shown without it.
    static constexpr std::string_view completedKey = "hasCompletedPermissionsOnboarding";

    explicit PermissionsOnboardingModel(PermissionsOnboardingServices services);

    [[nodiscard]] bool isGranted() const { return isGranted_; }
    [[nodiscard]] const std::string& detailText() const { return detailText_; }
    [[nodiscard]] bool isPolling() const { return pollTimer_ != nullptr; }

    /// Runs after each change of what is shown.
    void setOnChange(std::function<void()> handler) { onChange_ = std::move(handler); }
    /// Runs when Continue was chosen with the permission granted.
    void setOnContinueGranted(std::function<void()> handler) { onContinueGranted_ = std::move(handler); }

    /// Shows the base text and looks for the permission at once and then every 3 seconds.
    void startPolling();
    void stopPolling();
    /// Looks for the permission on a later turn of the main loop; an ungranted one keeps being looked for.
    void poll();

    void openSystemSettings();
    void continueTapped();
    /// Starts the program anew and ends this process once that has worked.
    void quitAndReopen();

private:
    void startTimer();
    void probe();
    void setDetailText(std::string text);

    PermissionsOnboardingServices services_;
    bool isGranted_ = false;
    std::string detailText_;
    std::unique_ptr<QTimer> pollTimer_; ///< none while not polling
    std::function<void()> onChange_;
    std::function<void()> onContinueGranted_;
};

} // namespace glimmerly
