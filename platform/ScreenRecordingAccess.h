#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace glimmerly {

/// The layer of the windows that are status items.
inline constexpr std::int64_t statusItemWindowLayer = 25;

/// A window as the window server lists it; what it leaves out, or gives in an unexpected form, is none.
struct ListedWindow {
    std::optional<std::uint32_t> number;
    std::optional<std::int64_t> layer;
};

/// What the window server tells this program of one window.
struct WindowDescription {
    std::optional<std::uint32_t> number;
    std::optional<std::int32_t> ownerProcess;
    std::optional<std::string> title; ///< UTF-8; of other programs' windows only with the permission
    std::optional<std::string> ownerName;
};

/// Whether and how this desktop lets a program see the screen. Main thread only; nothing here asks the user.
class ScreenRecordingAccess {
public:
    virtual ~ScreenRecordingAccess() = default;

    /// The windows on screen, front to back; none when they cannot be listed. Desktops whose windows have no
    /// layers list nothing.
    [[nodiscard]] virtual std::optional<std::vector<ListedWindow>> onScreenWindows() const = 0;
    /// None when there is no such window any more.
    [[nodiscard]] virtual std::optional<WindowDescription> description(std::uint32_t number) const = 0;
    /// The desktop's own word on the permission.
    [[nodiscard]] virtual bool preflight() const = 0;
    /// Opens the page of the desktop's settings where the permission is given; where there is none, or it
    /// does not open, nothing happens.
    virtual void openSettingsPage() = 0;
};

} // namespace glimmerly
