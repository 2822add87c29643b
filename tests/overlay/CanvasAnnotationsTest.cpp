#include "overlay/text/OverlayGrowingTextAnnotationView.h"
#include "overlay/text/OverlayTextView.h"
#include "overlay/toolbar/OverlayToolbarView.h"
#include "overlay/toolbar/ToolbarIconButton.h"
#include "tests/overlay/CanvasOnDisplay.h"
#include "tests/support/Widgets.h"

#include <QKeyEvent>
#include <QTest>
#include <gtest/gtest.h>

#include <random>
#include <set>

namespace glimmerly {
namespace {

/// A canvas with a selection and the user's hands on it; positions are pixels of a display of scale 1.
class CanvasAnnotations : public testing::Test {
protected:
    CanvasAnnotations() { canvas.select({100, 100}, {700, 400}); }

    ToolbarIconButton& button(const QString& name) {
        return widgetNamed<ToolbarIconButton>(name, canvas.view->toolbar());
    }
    void tap(const QString& name) { button(name).click(); }
    void draw(const QString& tool, PixelPoint from, PixelPoint to) {
        if (!button(tool).isOn())
            tap(tool);
        canvas.select(from, to);
    }
    void click(PixelPoint at) { canvas.select(at, at); }
    OverlayTextView& editor() { return canvas.view->textViews().editedView()->textView(); }
    void type(const QString& text) {
        for (const QChar character : text) {
            QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(character));
            QApplication::sendEvent(&editor(), &press);
        }
    }
    void writeText(PixelPoint at, const QString& text) {
        if (!button("Text tool").isOn())
            tap("Text tool");
        click(at);
        type(text);
        canvas.view->endTextEditing();
    }
    [[nodiscard]] const std::vector<OverlayAnnotation>& list() const {
        return canvas.view->annotations().appliedList();
    }

    CanvasOnDisplay canvas{{800, 600}};
};

TEST_F(CanvasAnnotations, TheFirstTestThatHoldsDecidesWhatADragDoes) {
    draw("Rectangle tool", {200, 200}, {300, 300});
    const auto before = list();
    ASSERT_EQ(before.size(), 1u);
    EXPECT_EQ(before[0].color, annotationPalette[0].color) << "the first tool lights red";

    canvas.select({700, 250}, {650, 250}); // a handle of the selection, though a tool is lit
    EXPECT_EQ(canvas.view->selectionRect()->width, 550);
    EXPECT_EQ(list(), before);

    canvas.select({200, 250}, {210, 255}); // the body's west handle comes before drawing
    EXPECT_EQ(std::get<RectangleShape>(list()[0].kind).rect.minX(), 210);
    canvas.select({230, 200}, {240, 220}); // its outline moves it
    EXPECT_EQ(std::get<RectangleShape>(list()[0].kind).rect.minX(), 220);
    EXPECT_EQ(list().size(), 1u);

    canvas.select({20, 20}, {60, 60}); // outside the selection nothing is drawn, nor selected anew
    EXPECT_EQ(list().size(), 1u);
    EXPECT_EQ(canvas.view->selectionRect()->width, 550);

    tap("Rectangle tool"); // a colour alone draws nothing
    canvas.select({400, 250}, {450, 300});
    EXPECT_EQ(list().size(), 1u);
}

TEST_F(CanvasAnnotations, SelectingAnAnnotationLightsItsToolAndColourAndColoursIt) {
    draw("Arrow tool", {200, 200}, {300, 300});
    tap("Blue");
    draw("Rectangle tool", {400, 200}, {500, 300});
    click({250, 250});
    EXPECT_TRUE(button("Arrow tool").isOn());
    EXPECT_TRUE(button("Red").isOn());
    tap("Green");
    EXPECT_EQ(list()[0].color, annotationPalette[1].color);
    EXPECT_EQ(list()[1].color, annotationPalette[2].color);
    tap("Green"); // stays lit, and is no second change
    EXPECT_TRUE(canvas.view->performUndo());
    EXPECT_EQ(list()[0].color, annotationPalette[0].color);
    tap("Undo");
    EXPECT_EQ(list().size(), 1u);
    tap("Redo");
    EXPECT_EQ(list().size(), 2u);
}

TEST_F(CanvasAnnotations, ATextIsSelectedByTheFirstClickAndEditedByTheSecond) {
    writeText({200, 200}, "word");
    const Uuid id = list()[0].id;
    const auto& view = *canvas.view->textViews().view(id);
    click({220, 200});
    EXPECT_EQ(canvas.view->annotations().selectedID(), id);
    EXPECT_TRUE(view.isCanvasSelected());
    EXPECT_FALSE(view.isEditing());
    click({220, 200});
    EXPECT_TRUE(view.isEditing());
    EXPECT_FALSE(canvas.view->annotations().selectedID());
    type("s");
    EXPECT_EQ(std::get<TextLabel>(list()[0].kind).text, "words");
}

TEST_F(CanvasAnnotations, APressBetweenFrameAndTextPutsTheCaret) {
    canvas.view->show();
    canvas.view->activateWindow();
    tap("Text tool");
    click({200, 200});
    type("word");
    auto* view = canvas.view->textViews().editedView();
    // As the window system delivers it, which also decides who gets the focus.
    QTest::mouseClick(canvas.view->windowHandle(), Qt::LeftButton, {}, view->pos() + QPoint(9, 3));
    ASSERT_EQ(canvas.view->textViews().editedView(), view);
    type("s");
    EXPECT_EQ(std::get<TextLabel>(list()[0].kind).text, "sword");
}

TEST_F(CanvasAnnotations, AButtonReleasedElsewhereDoesNotEndTyping) {
    canvas.view->show();
    canvas.view->activateWindow();
    tap("Text tool");
    click({200, 200});
    type("word");
    QWindow* const window = canvas.view->windowHandle();
    const QPoint undo = button("Undo").mapTo(canvas.view.get(), QPoint(14, 14));
    QTest::mousePress(window, Qt::LeftButton, {}, undo);
    QTest::mouseRelease(window, Qt::LeftButton, {}, undo + QPoint(0, 200));
    EXPECT_TRUE(canvas.view->textViews().editedView());
    QTest::mouseClick(window, Qt::LeftButton, {}, {600, 200});
    EXPECT_FALSE(canvas.view->textViews().editedView() &&
                 canvas.view->textViews().editedView()->textView().string() == "word");
}

TEST_F(CanvasAnnotations, ATextMovesOnceTheDragIsLongEnough) {
    writeText({200, 200}, "word");
    const Point anchor = std::get<TextLabel>(list()[0].kind).anchor;
    canvas.select({220, 200}, {224, 200});
    EXPECT_EQ(std::get<TextLabel>(list()[0].kind).anchor, anchor);
    canvas.select({220, 200}, {226, 210});
    EXPECT_EQ(std::get<TextLabel>(list()[0].kind).anchor, anchor + (Point{6, -10}));
    EXPECT_EQ(canvas.view->textViews().view(list()[0].id)->anchorInCanvas(), anchor + (Point{6, -10}));
    EXPECT_EQ(canvas.view->annotations().undoStack().size(), 2u);
}

TEST_F(CanvasAnnotations, WordsThatComeBackByAnUndoLeaveTheHistoryAlone) {
    writeText({200, 200}, "word");
    canvas.select({220, 200}, {250, 240});
    click({260, 240}); // selected by the drag already: edited
    ASSERT_TRUE(canvas.view->textViews().editedView());
    type("s");
    tap("Undo"); // the move, and the word as it was then
    const auto label = [&] { return std::get<TextLabel>(list()[0].kind); };
    EXPECT_EQ(label(), (TextLabel{{200, 401}, "word"}));
    tap("Redo");
    EXPECT_EQ(label(), (TextLabel{{230, 361}, "words"}));
}

TEST_F(CanvasAnnotations, AnEmptyTextGoesHoweverItIsLeft) {
    const std::vector<std::function<void()>> ways{
        [&] { tap("Undo"); },
        [&] { tap("Rectangle tool"); },
        [&] { tap("Green"); },
        [&] { canvas.select({700, 400}, {690, 390}); },
        [&] { writeText({400, 300}, "another"); },
        [&] { canvas.select({150, 420}, {150, 420}); },
    };
    for (const auto& leave : ways) {
        if (!button("Text tool").isOn())
            tap("Text tool");
        click({300, 200});
        ASSERT_TRUE(canvas.view->textViews().editedView());
        type("  ");
        const Uuid id = canvas.view->textViews().editedView()->annotationID();
        leave();
        canvas.view->endTextEditing();
        EXPECT_FALSE(canvas.view->annotations().find(id));
        EXPECT_FALSE(canvas.view->textViews().view(id));
    }
}

TEST_F(CanvasAnnotations, ATextOutsideTheSelectionIsHiddenAndCannotBeClicked) {
    writeText({650, 200}, "word");
    const auto& view = *canvas.view->textViews().view(list()[0].id);
    canvas.select({700, 250}, {600, 250});
    EXPECT_TRUE(view.isHidden());
    EXPECT_FALSE(canvas.view->textViews().textAnnotationContains({660, 401}, list()[0].id));
    canvas.select({600, 250}, {700, 250});
    EXPECT_FALSE(view.isHidden());
    EXPECT_TRUE(canvas.view->textViews().textAnnotationContains({660, 401}, list()[0].id));
}

TEST_F(CanvasAnnotations, AnyActionsKeepTheInvariants) {
    std::mt19937 random(11);
    const auto below = [&](int limit) { return std::uniform_int_distribution(0, limit - 1)(random); };
    const auto pixel = [&] { return PixelPoint{80 + below(650), 80 + below(350)}; };
    const std::array buttons{"Rectangle tool", "Arrow tool", "Text tool", "Red",
                             "Blue",           "White",      "Undo",      "Redo"};
    for (int i = 0; i < 1500 && !HasFailure(); ++i) {
        SCOPED_TRACE(i);
        switch (below(5)) {
        case 0:
            tap(buttons[static_cast<std::size_t>(below(buttons.size()))]);
            break;
        case 1:
            if (canvas.view->textViews().editedView())
                type("x");
            break;
        case 2:
            click(pixel());
            break;
        default:
            canvas.select(pixel(), pixel());
        }
        std::set<Uuid> ids;
        std::size_t texts = 0;
        for (const auto& annotation : list()) {
            EXPECT_TRUE(ids.insert(annotation.id).second);
            if (!std::holds_alternative<TextLabel>(annotation.kind))
                continue;
            ++texts;
            const auto* view = canvas.view->textViews().view(annotation.id);
            ASSERT_TRUE(view);
            EXPECT_EQ(view->textView().string().toStdString(), std::get<TextLabel>(annotation.kind).text);
        }
        EXPECT_EQ(canvas.view->textViews().count(), texts);
        int tools = 0;
        int colors = 0;
        for (const auto* each : canvas.view->toolbar().findChildren<ToolbarIconButton*>()) {
            if (each->isOn())
                ++(each->accessibleName().endsWith("tool") ? tools : colors);
        }
        EXPECT_LE(tools, 1);
        EXPECT_LE(colors, 1);
        EXPECT_LE(tools, colors);
    }
}

} // namespace
} // namespace glimmerly
