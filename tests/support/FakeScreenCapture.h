#pragma once

#include "platform/MainQueue.h"
#include "platform/ScreenCapture.h"

#include <utility>

namespace glimmerly {

/// Displays that look as a test says. Answers come through `queue`, or, while `holdsImages`, when the test
/// delivers them in an order of its own.
class FakeScreenCapture : public ScreenCapture {
public:
    using Displays = Result<std::vector<ShareableDisplay>>;
    using ImageHandler = std::function<void(Result<Bitmap>)>;

    explicit FakeScreenCapture(MainQueue& queue) : queue_(queue) {}

    /// A picture of one colour.
    [[nodiscard]] static Bitmap filled(PixelSize size, Bitmap::Pixel colour = 0xff336699) {
        Bitmap picture(size);
        for (int y = 0; y < size.height; ++y)
            std::ranges::fill(picture.row(y), colour);
        return picture;
    }

    void fetchShareableDisplays(std::function<void(Displays)> handler) override {
        queue_.post([handler = std::move(handler), answer = displays] { handler(answer); });
    }
    [[nodiscard]] ContentFilter contentFilter(const ShareableDisplay& display) const override {
        ContentFilter made = filter;
        made.displayID = display.displayID;
        return made;
    }
    void captureImage(const ContentFilter& asked, const CaptureConfiguration& configuration,
                      ImageHandler handler) override {
        filters.push_back(asked);
        configurations.push_back(configuration);
        if (holdsImages)
            held.push_back(std::move(handler));
        else
            queue_.post([handler = std::move(handler), answer = image] { handler(answer); });
    }

    /// What the next calls are answered with.
    Displays displays = std::vector{ShareableDisplay{1, 64, 48}};
    ContentFilter filter{.displayID = 0, .pointPixelScale = 1, .contentRect = {0, 0, 64, 48}};
    Result<Bitmap> image = filled({64, 48});
    bool holdsImages = false;

    /// What was asked for, oldest first.
    std::vector<ContentFilter> filters;
    std::vector<CaptureConfiguration> configurations;
    std::vector<ImageHandler> held;

private:
    MainQueue& queue_;
};

} // namespace glimmerly
