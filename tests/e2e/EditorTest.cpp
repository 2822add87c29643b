// Drawing, changing, taking back and typing by hand, and what the clipboard holds of it.
#include "tests/e2e/support/Editor.h"

namespace glimmerly::e2e {
namespace {

constexpr Bitmap::Pixel blue = 0xff1c75f2;
constexpr PixelSize displayPoints{800, 600};

class EditorAtScale : public testing::TestWithParam<double> {
protected:
    static PixelSize displaySize() {
        return {static_cast<int>(displayPoints.width * GetParam()),
                static_cast<int>(displayPoints.height * GetParam())};
    }

    /// Drags the eight handles in turn, each by (12, 8), of the rectangle with these corners, which follow.
    void resizeByEachHandle(Point& topLeft, Point& bottomRight) const {
        for (const auto& [column, row] :
             {std::pair{0, 0}, {1, 0}, {2, 0}, {2, 1}, {2, 2}, {1, 2}, {0, 2}, {0, 1}}) {
            const Point handle{std::lerp(topLeft.x, bottomRight.x, column / 2.0),
                               std::lerp(topLeft.y, bottomRight.y, row / 2.0)};
            editor.drag(handle, handle + Point{12, 8});
            (column == 0 ? topLeft.x : bottomRight.x) += column == 1 ? 0 : 12;
            (row == 0 ? topLeft.y : bottomRight.y) += row == 1 ? 0 : 8;
        }
    }
    /// Whether the picture of the selection has that colour on both sides of a line through `place`.
    [[nodiscard]] bool isDrawn(const Bitmap& picture, Point place, Bitmap::Pixel color) const {
        const Pixel pixel = editor.at(place);
        const int x = pixel.x - editor.selection().x;
        const int y = pixel.y - editor.selection().y;
        const auto colorAt = [&](int column, int row) {
            return picture.row(row)[static_cast<std::size_t>(column)];
        };
        return colorAt(x, y) == color && colorAt(x - 1, y - 1) == color;
    }

    Session session{Desktop::Options{.size = displaySize()},
                    Glimmerly::Options{.environment = {{"QT_SCALE_FACTOR", std::to_string(GetParam())}}}};
    Editor editor{session, GetParam()};
    Bitmap screen = session.desktop.client().pixels();
};

/// How many pixels of two pictures of one size differ.
int differences(const Bitmap& a, const Bitmap& b) {
    int count = 0;
    for (int y = 0; y < a.height(); ++y)
        count += static_cast<int>(std::ranges::count(std::views::iota(0, a.width()), true, [&](int x) {
            return a.row(y)[static_cast<std::size_t>(x)] != b.row(y)[static_cast<std::size_t>(x)];
        }));
    return count;
}

TEST_P(EditorAtScale, WhatWasDrawnChangedTakenBackAndRepeatedIsOnTheClipboardAsShown) {
    ASSERT_TRUE(session.openOverlay());
    ASSERT_TRUE(editor.select({60, 60}, {740, 480}));
    editor.tap("Rectangle tool");
    editor.drag({120, 120}, {300, 220});
    editor.drag({140, 120}, {160, 140}); // by its outline
    Point topLeft{140, 140};
    Point bottomRight{320, 240};
    resizeByEachHandle(topLeft, bottomRight);
    editor.tap("Blue");
    editor.tap("Arrow tool");
    editor.drag({400, 160}, {560, 200});
    editor.drag({400, 160}, {420, 260}); // its start
    editor.drag({560, 200}, {600, 260}); // its end
    editor.drag({500, 260}, {510, 300}); // all of it
    editor.tap("Text tool");
    editor.click({120, 340});
    session.robot.typeText("two words\nbelow");
    editor.tap("Text tool");             // off again, which ends the typing
    editor.drag({130, 340}, {170, 360}); // the text
    const int steps = 1 + 1 + 8 + 1 + 4 + 2;
    ASSERT_TRUE(editor.waitForPainting());
    const auto drawn = editor.shown();

    for (int step = 0; step < steps; ++step) {
        ASSERT_NE(editor.shown(), screen.view(editor.inner())) << "after " << step;
        editor.tap("Undo");
        ASSERT_TRUE(editor.waitForPainting());
    }
    EXPECT_TRUE(samePixels(editor.shown(), screen.view(editor.inner())));
    for (int step = 0; step < steps; ++step)
        session.robot.type({Key::leftControl, Key::leftShift, Key::z});
    ASSERT_TRUE(editor.waitForPainting());
    EXPECT_TRUE(samePixels(editor.shown(), drawn));

    ASSERT_TRUE(editor.moveBar(-40, -200));
    ASSERT_TRUE(editor.waitForPainting());
    EXPECT_NE(editor.shown(), drawn) << "the bar is over the selection";
    editor.tap("Done");
    ASSERT_TRUE(session.waitForNoOverlay());
    const auto copied = session.clipboard.picture();
    ASSERT_TRUE(copied);
    ASSERT_EQ(copied->size(), editor.selection().size());

    const auto inner = editor.inner();
    const int edge = inner.x - editor.selection().x;
    const auto different = differences(copied->view({edge, edge, inner.width, inner.height}), drawn);
    // A widget's clip is rounded to whole pixels on the screen: the tip of a letter may be cut there.
    EXPECT_LE(different, GetParam() == std::floor(GetParam()) ? 0 : 8);
    const Point middle{(topLeft.x + bottomRight.x) / 2, (topLeft.y + bottomRight.y) / 2};
    for (const Point place : {Point{middle.x, topLeft.y},
                              {middle.x, bottomRight.y},
                              {topLeft.x, middle.y},
                              {bottomRight.x, middle.y}})
        EXPECT_TRUE(isDrawn(*copied, place, blue)) << place.x << ", " << place.y;
    EXPECT_TRUE(isDrawn(*copied, {500, 300}, blue));
    // All that is drawn lies within; around it the pixels are the captured ones, also under the frame.
    const auto plain = screen.view(editor.selection());
    const auto belowAll = [&](const Bitmap& picture) {
        const int top = editor.at({0, 440}).y - editor.selection().y;
        return picture.view({0, top, picture.width(), picture.height() - top});
    };
    EXPECT_TRUE(samePixels(belowAll(*copied), belowAll(plain)));
    EXPECT_TRUE(samePixels(copied->view({0, 0, copied->width(), 2 * edge}),
                           plain.view({0, 0, plain.width(), 2 * edge})));
}

INSTANTIATE_TEST_SUITE_P(Scales, EditorAtScale, testing::Values(1.0, 1.5, 2.0), [](const auto& test) {
    return "Percent" + std::to_string(static_cast<int>(test.param * 100));
});

} // namespace
} // namespace glimmerly::e2e
