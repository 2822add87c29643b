#include "capture/onboarding/PermissionsWindowController.h"

#include "capture/onboarding/PermissionsOnboardingText.h"
#include "capture/onboarding/PermissionsOnboardingView.h"
#include "capture/permission/ScreenRecordingPermission.h"
#include "platform/Application.h"
#include "platform/Platform.h"
#include "platform/Preferences.h"
#include "telemetry/TelemetrySink.h"
#include "ui/WindowPlacement.h"

#include <QCloseEvent>
#include <QPointer>
#include <QVBoxLayout>

namespace glimmerly {

namespace {

constexpr QSize contentSize(560, 640);        // points
constexpr QSize minimumContentSize(480, 420); // points

} // namespace

/// A window with a title bar and no buttons in it, which its user cannot resize.
class PermissionsWindowController::Window : public QWidget {
public:
    explicit Window(PermissionsWindowController& controller)
        : QWidget(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
          controller_(controller) {
        setWindowTitle(QString::fromUtf8(onboarding_text::windowTitle));
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(new PermissionsOnboardingView(controller.model(), this));
    }

protected:
    // Without a close button, window managers still have keys of their own to close a window with.
    void closeEvent(QCloseEvent* event) override {
        controller_.windowWillClose();
        event->accept();
    }

private:
    PermissionsWindowController& controller_;
};

PermissionsWindowController& PermissionsWindowController::shared() {
    static auto* const instance =
        new PermissionsWindowController({.permission = ScreenRecordingPermission::shared(),
                                         .preferences = Platform::current().preferences,
                                         .application = Platform::current().application,
                                         .mainQueue = Platform::current().mainQueue,
                                         .telemetry = TelemetrySink::shared()});
    return *instance;
}

PermissionsWindowController::PermissionsWindowController(const PermissionsOnboardingServices& services)
    : services_(services), model_(services), window_(std::make_unique<Window>(*this)) {
    model_.setOnContinueGranted([window = QPointer<QWidget>(window_.get())] {
        if (window)
            window->close();
    });
}

PermissionsWindowController::~PermissionsWindowController() = default;

void PermissionsWindowController::showIfNeeded() {
    const bool granted = services_.permission.isGranted();
    services_.preferences.setBool(PermissionsOnboardingModel::completedKey, granted);
    if (granted)
        return;
    fitOnDisplay(*window_, contentSize, minimumContentSize);
    window_->show();
    services_.application.activateIgnoringOtherApps();
    model_.startPolling();
    services_.telemetry.track(telemetry_event::permissionOnboardingShown);
}

void PermissionsWindowController::windowWillClose() {
    model_.stopPolling();
}

} // namespace glimmerly
