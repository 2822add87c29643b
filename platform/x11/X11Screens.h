#pragma once

#include "platform/Screens.h"
#include "platform/x11/X11Connection.h"

#include <memory>

namespace glimmerly {

/// Qt's screens, with the exact sizes and native pixels that RandR knows of them.
///
/// Qt places a scaled screen at its native origin and gives it its native size divided by the scale, rounded
/// to whole points. Frames here have the same origins, so that windows go where they should, but the size as
/// it is: a point beyond the frame is a pixel beyond the display.
class X11Screens : public Screens {
public:
    explicit X11Screens(std::unique_ptr<X11Connection> connection);

    [[nodiscard]] std::vector<Screen> screens() const override;
    /// Qt's primary screen.
    [[nodiscard]] std::optional<Screen> mainScreen() const override;
    /// The lower left corner of the native pixel that the pointer is on, so that it is within the frame of
    /// that pixel's screen at any scale. Not a number when the server has gone.
    [[nodiscard]] Point mouseLocation() const override;

private:
    std::unique_ptr<X11Connection> connection_;
};

} // namespace glimmerly
