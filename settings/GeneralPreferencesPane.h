#pragma once

#include "settings/PreferencesPage.h"

#include <QTimer>

namespace glimmerly {

struct HotkeyRecorderServices;
class ScreenRecordingPermission;
class UiLabel;

/// The screenshot's shortcut, and the permission to record the screen, looked for every second while the pane
/// is on the screen.
class GeneralPreferencesPane : public PreferencesPage {
public:
    GeneralPreferencesPane(const HotkeyRecorderServices& recorder, ScreenRecordingPermission& permission,
                           QWidget* parent = nullptr);

    [[nodiscard]] bool screenCaptureGranted() const { return screenCaptureGranted_; }
    [[nodiscard]] bool isPolling() const { return pollTimer_.isActive(); }

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void addShortcuts(const HotkeyRecorderServices& recorder);
    void addPrivacy();
    void probe();

    ScreenRecordingPermission& permission_;
    bool screenCaptureGranted_ = false;
    UiLabel* status_ = nullptr;
    QTimer pollTimer_;
};

} // namespace glimmerly
