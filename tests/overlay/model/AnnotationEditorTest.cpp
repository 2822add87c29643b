#include "overlay/model/AnnotationEditor.h"

#include "overlay/model/AnnotationPalette.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace glimmerly {
namespace {

constexpr Rect bounds{0, 0, 400, 300};
constexpr Color red = annotationPalette[0].color;
constexpr Color blue = annotationPalette[2].color;

OverlayAnnotation rectangleAt(Rect rect, Color color = red) {
    return {Uuid::generate(), RectangleShape{rect}, color};
}

OverlayAnnotation textAt(Point anchor, std::string text = {}) {
    return {Uuid::generate(), TextLabel{anchor, std::move(text)}, red};
}

void dragBy(AnnotationEditor& editor, const AnnotationHit& hit, Point from, Point to) {
    editor.beginInteraction(hit, from);
    editor.dragInteraction(to, bounds);
    editor.endInteraction();
}

TEST(AnnotationEditor, DrawingAndMovingForgetWhatWasUndone) {
    AnnotationEditor editor;
    const auto rectangle = rectangleAt({10, 10, 50, 40});
    editor.addAnnotation(rectangle);
    dragBy(editor, MoveHit{rectangle.id}, {10, 10}, {15, 17});
    ASSERT_TRUE(editor.performUndo());
    EXPECT_EQ(editor.redoStack().size(), 1U);
    dragBy(editor, MoveHit{rectangle.id}, {10, 10}, {12, 12});
    EXPECT_TRUE(editor.redoStack().empty());
    ASSERT_TRUE(editor.performUndo() && editor.performUndo());
    EXPECT_FALSE(editor.performUndo());
    editor.addAnnotation(rectangleAt({0, 0, 20, 20}));
    EXPECT_FALSE(editor.performRedo());
}

TEST(AnnotationEditor, MakesNoHistoryOfWhatChangedNothing) {
    AnnotationEditor editor;
    const auto rectangle = rectangleAt({10, 10, 40, 40});
    editor.addAnnotation(rectangle);
    ASSERT_TRUE(editor.performUndo());
    ASSERT_TRUE(editor.performRedo());
    dragBy(editor, MoveHit{rectangle.id}, {10, 10}, {10, 10});
    EXPECT_EQ(editor.recolorSelectedAnnotation(red), AnnotationEditor::Change::none);
    editor.beginDraft({Uuid::generate(), SelectionTool::arrow, red, {10, 10}, {11, 11}});
    editor.commitDraft();
    EXPECT_EQ(editor.undoStack().size(), 1U);
    EXPECT_EQ(editor.recolorSelectedAnnotation(blue), AnnotationEditor::Change::made);
    EXPECT_EQ(editor.undoStack().size(), 2U);
}

TEST(AnnotationEditor, AnAbandonedEmptyTextLeavesNoTrace) {
    for (const std::string_view blank : {"", "  \n\t", "\u00A0\u3000"}) {
        AnnotationEditor editor;
        editor.addAnnotation(rectangleAt({0, 0, 10, 10}));
        const auto text = textAt({50, 50});
        editor.addAnnotation(text);
        editor.selectAnnotation(text.id);
        editor.updateAnnotationText(text.id, blank);
        EXPECT_EQ(editor.removeIfEmptyText(text.id), AnnotationEditor::Change::made) << blank;
        EXPECT_EQ(editor.appliedList().size(), 1U);
        EXPECT_EQ(editor.undoStack().size(), 1U);
        EXPECT_FALSE(editor.selectedID());
    }
    AnnotationEditor editor;
    const auto kept = textAt({50, 50}, " x ");
    editor.addAnnotation(kept);
    EXPECT_EQ(editor.removeIfEmptyText(kept.id), AnnotationEditor::Change::none);
    EXPECT_EQ(std::get<TextLabel>(editor.find(kept.id)->kind).text, " x ");
}

/// Plays user actions at random, then undoes to the beginning and redoes to the end.
class RandomSession {
public:
    explicit RandomSession(unsigned seed) : random_(seed) {}

    void play(int steps) {
        for (int i = 0; i < steps; ++i) {
            step();
            std::set<Uuid> ids;
            for (const auto& annotation : editor_.appliedList())
                EXPECT_TRUE(ids.insert(annotation.id).second);
        }
        std::vector<std::vector<OverlayAnnotation>> states{editor_.appliedList()};
        while (editor_.performUndo())
            states.push_back(editor_.appliedList());
        EXPECT_TRUE(editor_.appliedList().empty());
        for (auto state = std::next(states.rbegin()); state != states.rend(); ++state) {
            EXPECT_TRUE(editor_.performRedo());
            EXPECT_EQ(editor_.appliedList(), *state);
        }
    }

private:
    int below(int limit) { return std::uniform_int_distribution(0, limit - 1)(random_); }
    Point anyPoint() { return {static_cast<double>(below(400)), static_cast<double>(below(300))}; }
    Color anyColor() { return annotationPalette[static_cast<std::size_t>(below(6))].color; }
    Uuid anyID() {
        const auto& list = editor_.appliedList();
        return list[static_cast<std::size_t>(below(static_cast<int>(list.size())))].id;
    }

    void step() {
        switch (editor_.appliedList().empty() ? below(2) : below(8)) {
        case 0:
            editor_.beginDraft({Uuid::generate(),
                                below(2) ? SelectionTool::rectangle : SelectionTool::arrow,
                                anyColor(),
                                anyPoint(),
                                {}});
            editor_.dragDraft(anyPoint());
            editor_.commitDraft();
            break;
        case 1:
            editor_.addAnnotation(textAt(anyPoint(), "text"));
            break;
        case 2:
            dragBy(editor_, MoveHit{anyID()}, anyPoint(), anyPoint());
            break;
        case 3:
            dragBy(editor_, ResizeHit{anyID(), RectangleHandle{static_cast<SelectionHandle>(below(8))}},
                   anyPoint(), anyPoint());
            break;
        case 4:
            dragBy(editor_, ResizeHit{anyID(), ArrowEnd{}}, anyPoint(), anyPoint());
            break;
        case 5:
            editor_.selectAnnotation(anyID());
            editor_.recolorSelectedAnnotation(anyColor());
            break;
        case 6:
            (void)editor_.performUndo();
            break;
        default:
            (void)editor_.performRedo();
        }
    }

    std::mt19937 random_;
    AnnotationEditor editor_;
};

TEST(AnnotationEditor, RandomSessionsUndoAndRedoExactly) {
    for (unsigned seed = 0; seed < 200 && !::testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        RandomSession(seed).play(60);
    }
}

} // namespace
} // namespace glimmerly
