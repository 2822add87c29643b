#include "tests/e2e/support/Editor.h"

#include <array>
#include <cmath>

namespace glimmerly::e2e {

namespace {

constexpr double barWidth = 509;
constexpr double barHeight = 44;
constexpr double barGap = 10;
constexpr double shadowReach = 30; ///< above a bar that hangs below the selection, at most
constexpr Bitmap::Pixel barColor = 0xffffffff;

/// The buttons' centres from the bar's left edge, in points.
constexpr std::pair<std::string_view, int> buttons[] = {
    {"Rectangle tool", 53}, {"Arrow tool", 85}, {"Text tool", 117}, {"Red", 158},
    {"Green", 190},         {"Blue", 222},      {"Undo", 359},      {"Redo", 391},
    {"Close", 423},         {"Download", 455},  {"Done", 487},
};

} // namespace

Pixel Editor::at(Point place) const {
    return {static_cast<int>(std::lround(place.x * scale_)), static_cast<int>(std::lround(place.y * scale_))};
}

testing::AssertionResult Editor::select(Point from, Point to) {
    const Pixel corner = at(from);
    const Pixel opposite = at(to);
    selection_ = {corner.x, corner.y, opposite.x - corner.x, opposite.y - corner.y};
    bar_ = {to.x - barWidth, to.y + barGap};
    drag(from, to);
    return waitForBar();
}

testing::AssertionResult Editor::moveBar(double dx, double dy) {
    const Point handle = bar_ + Point{17, barHeight / 2};
    drag(handle, handle + Point{dx, dy});
    bar_ = bar_ + Point{dx, dy};
    return waitForBar();
}

testing::AssertionResult Editor::waitForBar() const {
    // Beside its first and its last button it is white, as the noise behind it is not.
    const auto isThere = [this] {
        return std::ranges::all_of(std::array{35.0, 500.0 + 4}, [this](double x) {
            const Pixel place = at(bar_ + Point{x, barHeight / 2});
            return session_.desktop.client().pixels({place.x, place.y, 1, 1}).row(0)[0] == barColor;
        });
    };
    return waitUntil(isThere) ? testing::AssertionSuccess() : testing::AssertionFailure() << "no bar";
}

testing::AssertionResult Editor::waitForPainting() const {
    const auto& client = session_.desktop.client();
    const Point close = buttonPlace("Close");
    const Pixel corner = at(close - Point{14, 14});
    const int side = static_cast<int>(28 * scale_);
    const auto look = [&] { return client.pixels({corner.x, corner.y, side, side}); };
    const auto atRest = look();
    session_.robot.moveTo(at(close));
    if (!waitUntil([&] { return look() != atRest; }))
        return testing::AssertionFailure() << "the overlay does not paint";
    session_.robot.moveTo({1, 1});
    if (!waitUntil([&] { return look() == atRest; }))
        return testing::AssertionFailure() << "the button stays lit";
    return testing::AssertionSuccess();
}

PixelRect Editor::inner() const {
    const int edge = static_cast<int>(std::ceil(6 * scale_));
    const int bottom = static_cast<int>(std::ceil(shadowReach * scale_));
    return {selection_.x + edge, selection_.y + edge, selection_.width - 2 * edge,
            selection_.height - edge - bottom};
}

Point Editor::buttonPlace(std::string_view button) const {
    const auto found = std::ranges::find(buttons, button, &std::pair<std::string_view, int>::first);
    if (found == std::end(buttons))
        throw std::invalid_argument("no button " + std::string(button));
    return bar_ + Point{static_cast<double>(found->second), barHeight / 2};
}

} // namespace glimmerly::e2e
