#pragma once

#include "tests/e2e/support/Session.h"

namespace glimmerly::e2e {

/// A person who selects, draws, types and presses the bar's buttons in an open overlay. Places are points of
/// the display, y downwards; even ones are whole pixels at a scale of 1.5 too.
class Editor {
public:
    Editor(Session& session, double scale) : session_(session), scale_(scale) {}

    [[nodiscard]] Pixel at(Point place) const;
    void drag(Point from, Point to) const { session_.robot.drag(at(from), at(to)); }
    void click(Point place) const { session_.robot.click(at(place)); }
    /// Drags out a selection and waits for the bar below it.
    [[nodiscard]] testing::AssertionResult select(Point from, Point to);
    /// Presses a button of the bar by its name.
    void tap(std::string_view button) const { click(buttonPlace(button)); }
    /// Drags the bar by its handle, and waits for it there.
    [[nodiscard]] testing::AssertionResult moveBar(double dx, double dy);

    /// Waits until all that was done so far is painted: a button that is painted as hovered shows it.
    [[nodiscard]] testing::AssertionResult waitForPainting() const;
    /// The selection's pixels on the screen.
    [[nodiscard]] PixelRect selection() const { return selection_; }
    /// What the screen shows of the selection, clear of its frame, its handles and the bar's shadow.
    [[nodiscard]] Bitmap shown() const { return session_.desktop.client().pixels(inner()); }
    [[nodiscard]] PixelRect inner() const;

private:
    [[nodiscard]] testing::AssertionResult waitForBar() const;
    [[nodiscard]] Point buttonPlace(std::string_view button) const;

    Session& session_;
    double scale_;
    PixelRect selection_;
    Point bar_; ///< its top left corner
};

} // namespace glimmerly::e2e
