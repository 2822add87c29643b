#pragma once

#include "settings/GlimmerlyPreferencesRoot.h"

#include <memory>
#include <string_view>

namespace glimmerly {

/// Owns the settings window, from its first use to the end of the process. Main thread only.
class SettingsWindowController {
public:
    /// Posted before the window is shown, each time.
    static constexpr std::string_view willShowNotification = "GlimmerlySettingsWindowWillShow";

    explicit SettingsWindowController(const SettingsServices& services);
    ~SettingsWindowController();
    SettingsWindowController(const SettingsWindowController&) = delete;
    SettingsWindowController& operator=(const SettingsWindowController&) = delete;

    [[nodiscard]] static SettingsWindowController& shared();

    /// Brings the window to the front with the keyboard, on a later turn of the main loop. Closing the window
    /// only hides it; it comes back as it was.
    void show();

    [[nodiscard]] GlimmerlyPreferencesRoot& root() { return *root_; }
    [[nodiscard]] QWidget& window() { return *window_; }

private:
    void bringForward();

    SettingsServices services_;
    std::unique_ptr<QWidget> window_;
    GlimmerlyPreferencesRoot* root_;
    std::shared_ptr<SettingsWindowController*> self_; ///< held weakly by what was posted
};

} // namespace glimmerly
