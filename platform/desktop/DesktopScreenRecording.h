#pragma once

#include "platform/ScreenRecordingAccess.h"
#include "platform/portal/PermissionStore.h"

#include <optional>

namespace glimmerly {

/// An X server shows every program everything. Where a Wayland session stands behind it, the portals' store
/// has the say, unless none runs.
class DesktopScreenRecording : public ScreenRecordingAccess {
public:
    /// `bundleIdentifier` is this program's own.
    explicit DesktopScreenRecording(const std::string& bundleIdentifier);

    [[nodiscard]] std::optional<std::vector<ListedWindow>> onScreenWindows() const override;
    [[nodiscard]] std::optional<WindowDescription> description(std::uint32_t number) const override;
    [[nodiscard]] bool preflight() const override;
    void openSettingsPage() override;

private:
    std::optional<PermissionStore> store_; ///< none where nothing is withheld
    mutable bool hasAsked_ = false;
    mutable StoredPermission lastWord_ = StoredPermission::unknown;
    std::string bundleIdentifier_;
};

} // namespace glimmerly
