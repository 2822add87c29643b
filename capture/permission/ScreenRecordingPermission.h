#pragma once

#include <cstdint>
#include <vector>

namespace glimmerly {

class ScreenCapture;
class ScreenRecordingAccess;

/// Answers whether this program may record the screen, and leads the user to where that is decided. Main
/// thread only.
class ScreenRecordingPermission {
public:
    /// `ownProcess` is this process's identifier.
    ScreenRecordingPermission(ScreenRecordingAccess& access, ScreenCapture& screenCapture,
                              std::int32_t ownProcess);

    [[nodiscard]] static ScreenRecordingPermission& shared();

    /// Asks nothing of the user, and is cheap enough to be polled: the first status item of another program
    /// decides by whether its title can be read, and the desktop's own word where there is none.
    [[nodiscard]] bool isGranted() const;
    /// Asks for the permission and opens the page of the system settings that lists it. Never fails visibly.
    void requestAccess();

private:
    [[nodiscard]] std::vector<std::uint32_t> statusBarWindows() const;

    ScreenRecordingAccess& access_;
    ScreenCapture& screenCapture_;
    std::int32_t ownProcess_;
};

} // namespace glimmerly
