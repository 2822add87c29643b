#include "capture/onboarding/PermissionsOnboardingModel.h"

#include "capture/onboarding/PermissionsOnboardingText.h"
#include "capture/permission/ScreenRecordingPermission.h"
#include "platform/Application.h"
#include "platform/MainQueue.h"
#include "platform/Preferences.h"
#include "telemetry/Telemetry.h"

#include <QPointer>

#include <chrono>
#include <utility>

namespace glimmerly {

namespace {

constexpr std::chrono::seconds pollInterval{3};

} // namespace

PermissionsOnboardingModel::PermissionsOnboardingModel(PermissionsOnboardingServices services)
    : services_(services), detailText_(onboarding_text::baseDetail) {}

void PermissionsOnboardingModel::startPolling() {
    setDetailText(onboarding_text::baseDetail);
    startTimer();
    probe();
}

void PermissionsOnboardingModel::stopPolling() {
    pollTimer_.reset();
}

void PermissionsOnboardingModel::startTimer() {
    pollTimer_ = std::make_unique<QTimer>();
    pollTimer_->setTimerType(Qt::PreciseTimer);
    connect(pollTimer_.get(), &QTimer::timeout, this, [this] { poll(); });
    pollTimer_->start(pollInterval);
}

void PermissionsOnboardingModel::poll() {
    services_.mainQueue.post([model = QPointer(this)] {
        if (model)
            model->probe();
    });
}

void PermissionsOnboardingModel::probe() {
    const bool granted = services_.permission.isGranted();
    if (granted)
        stopPolling();
    if (std::exchange(isGranted_, granted) != granted && onChange_)
        onChange_();
}

void PermissionsOnboardingModel::setDetailText(std::string text) {
    if (detailText_ == text)
        return;
    detailText_ = std::move(text);
    if (onChange_)
        onChange_();
}

void PermissionsOnboardingModel::openSystemSettings() {
    services_.telemetry.track(telemetry_event::permissionOpenSystemSettings);
    services_.permission.requestAccess();
    probe();
}

void PermissionsOnboardingModel::continueTapped() {
    if (services_.permission.isGranted()) {
        services_.preferences.setBool(completedKey, true);
        services_.telemetry.track(telemetry_event::permissionOnboardingDismissed);
        stopPolling();
        if (onContinueGranted_)
            onContinueGranted_();
        return;
    }
    setDetailText(std::string(onboarding_text::baseDetail) + onboarding_text::stillOff);
    services_.application.activateIgnoringOtherApps();
    startTimer();
    probe();
}

void PermissionsOnboardingModel::quitAndReopen() {
    services_.application.openNewInstance(
        [&mainQueue = services_.mainQueue, &application = services_.application](const auto& error) {
            if (!error)
                mainQueue.post([&application] { application.terminate(); });
        });
}

} // namespace glimmerly
