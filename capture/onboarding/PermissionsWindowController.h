#pragma once

#include "capture/onboarding/PermissionsOnboardingModel.h"

#include <QWidget>

namespace glimmerly {

/// Owns the onboarding window and decides at launch whether it is needed. Main thread only.
class PermissionsWindowController {
public:
    explicit PermissionsWindowController(const PermissionsOnboardingServices& services);
    ~PermissionsWindowController();
    PermissionsWindowController(const PermissionsWindowController&) = delete;
    PermissionsWindowController& operator=(const PermissionsWindowController&) = delete;

    [[nodiscard]] static PermissionsWindowController& shared();

    /// Called once, at launch: shows the window when the permission is missing.
    void showIfNeeded();

    [[nodiscard]] PermissionsOnboardingModel& model() { return model_; }
    [[nodiscard]] QWidget& window() { return *window_; }

private:
    class Window;
    void windowWillClose();

    PermissionsOnboardingServices services_;
    PermissionsOnboardingModel model_;
    std::unique_ptr<QWidget> window_;
};

} // namespace glimmerly
