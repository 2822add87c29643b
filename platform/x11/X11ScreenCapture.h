#pragma once

#include "platform/MainQueue.h"
#include "platform/ScreenCapture.h"
#include "platform/Screens.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Grabber.h"
#include "platform/x11/X11Repainting.h"

#include <memory>

namespace glimmerly {

/// Takes the displays' pixels as the X server has them: native, unscaled and without the pointer, which is
/// the only way the program asks for.
class X11ScreenCapture : public ScreenCapture {
public:
    /// `screens` and `mainQueue` must outlive the service.
    X11ScreenCapture(std::unique_ptr<X11Connection> connection, const Screens& screens, MainQueue& mainQueue,
                     X11Repainting::Limits limits = {});

    void fetchShareableDisplays(std::function<void(Result<std::vector<ShareableDisplay>>)> handler) override;
    [[nodiscard]] ContentFilter contentFilter(const ShareableDisplay& display) const override;
    void captureImage(const ContentFilter& filter, const CaptureConfiguration& configuration,
                      std::function<void(Result<Bitmap>)> handler) override;

private:
    [[nodiscard]] Result<Bitmap> grab(std::uint32_t displayID);

    std::unique_ptr<X11Connection> connection_;
    const Screens& screens_;
    MainQueue& mainQueue_;
    X11Grabber grabber_;
    X11Repainting repainting_;
};

} // namespace glimmerly
