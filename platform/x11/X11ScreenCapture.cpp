#include "platform/x11/X11ScreenCapture.h"

#include "platform/x11/X11Displays.h"

#include <algorithm>
#include <cerrno>
#include <cmath>

namespace glimmerly {

X11ScreenCapture::X11ScreenCapture(std::unique_ptr<X11Connection> connection, const Screens& screens,
                                   MainQueue& mainQueue, X11Repainting::Limits limits)
    : connection_(std::move(connection)), screens_(screens), mainQueue_(mainQueue), grabber_(*connection_),
      repainting_(*connection_, limits) {}

void X11ScreenCapture::fetchShareableDisplays(
    std::function<void(Result<std::vector<ShareableDisplay>>)> handler) {
    std::vector<ShareableDisplay> displays;
    for (const Screen& screen : screens_.screens()) {
        if (screen.displayID)
            displays.push_back(
                {*screen.displayID, std::llround(screen.frame.width), std::llround(screen.frame.height)});
    }
    mainQueue_.post([handler = std::move(handler), displays = std::move(displays)] { handler(displays); });
}

ContentFilter X11ScreenCapture::contentFilter(const ShareableDisplay& display) const {
    const auto all = screens_.screens();
    const auto found = std::ranges::find(all, display.displayID, &Screen::displayID);
    if (found == all.end())
        return {.displayID = display.displayID, .pointPixelScale = 1, .contentRect = {}};
    return {.displayID = display.displayID,
            .pointPixelScale = static_cast<float>(found->backingScale),
            .contentRect = {0, 0, found->frame.width, found->frame.height}};
}

void X11ScreenCapture::captureImage(const ContentFilter& filter, const CaptureConfiguration&,
                                    std::function<void(Result<Bitmap>)> handler) {
    repainting_.whenDone([this, displayID = filter.displayID, handler = std::move(handler)] {
        mainQueue_.post([handler, image = grab(displayID)] { handler(image); });
    });
}

Result<Bitmap> X11ScreenCapture::grab(std::uint32_t displayID) {
    const auto displays = x11Displays(*connection_);
    if (xcb_connection_has_error(connection_->get()))
        return failure(x11Error(nullptr, "Capturing the display"));
    const auto found = std::ranges::find(displays, displayID, &X11Display::id);
    if (found == displays.end())
        return failure(Error::posix(ENODEV, "Capturing a display that has gone"));
    return grabber_.grab(found->area);
}

} // namespace glimmerly
