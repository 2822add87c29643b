#include "overlay/model/AnnotationEditing.h"
#include "overlay/model/AnnotationHitTest.h"
#include "overlay/model/AnnotationPalette.h"
#include "overlay/model/AnnotationStyle.h"
#include "overlay/model/ArrowGeometry.h"

#include <gtest/gtest.h>

#include <cmath>

namespace glimmerly {
namespace {

constexpr Color red = annotationPalette[0].color;
constexpr Rect screen{0, 0, 1440, 902};

OverlayAnnotation make(OverlayAnnotationKind kind) {
    return {Uuid::generate(), std::move(kind), red};
}

OverlayAnnotation rectangle(Rect rect) {
    return make(RectangleShape{rect});
}

std::optional<AnnotationHit> hit(Point point, const std::vector<OverlayAnnotation>& annotations) {
    return hitTestAnnotation(point, annotations, [](Point, const Uuid&) { return false; });
}

TEST(Annotation, DraftBecomesAnAnnotationOnceItIsBigEnough) {
    const auto draft = [](SelectionTool tool, Point start, Point current) {
        return annotationFromDraft({Uuid::generate(), tool, red, start, current});
    };
    EXPECT_FALSE(draft(SelectionTool::rectangle, {0, 0}, {0.5, 40}));
    EXPECT_FALSE(draft(SelectionTool::rectangle, {0, 0}, {40, -0.5}));
    EXPECT_TRUE(draft(SelectionTool::rectangle, {0, 0}, {1, 1}));
    EXPECT_FALSE(draft(SelectionTool::arrow, {0, 0}, {1.9, 0}));
    EXPECT_TRUE(draft(SelectionTool::arrow, {0, 0}, {0, -2}));
    EXPECT_FALSE(draft(SelectionTool::text, {0, 0}, {100, 100}));

    const Uuid id = Uuid::generate();
    const auto rect = annotationFromDraft({id, SelectionTool::rectangle, red, {30, 5}, {10, 25}});
    ASSERT_TRUE(rect);
    EXPECT_EQ(*rect, (OverlayAnnotation{id, RectangleShape{{10, 5, 20, 20}}, red}));
    const auto arrow = annotationFromDraft({id, SelectionTool::arrow, red, {30, 5}, {10, 25}});
    ASSERT_TRUE(arrow);
    EXPECT_EQ(arrow->kind, OverlayAnnotationKind(ArrowShape{{30, 5}, {10, 25}}));
}

TEST(Annotation, AnEditIsRecordedOnlyWhenSomethingChanged) {
    const auto before = make(TextLabel{{1, 2}, "hello"});
    EXPECT_FALSE(makeEditAction(before, before));
    auto recoloured = before;
    recoloured.color = Color::white(1);
    auto moved = before;
    moved.kind = movedKind(before.kind, {0, 1});
    for (const auto& after : {recoloured, moved}) {
        const auto action = makeEditAction(before, after);
        ASSERT_TRUE(action);
        EXPECT_EQ(std::get<EditAction>(*action).oldAnnotation, before);
        EXPECT_EQ(std::get<EditAction>(*action).newAnnotation, after);
    }
}

TEST(Annotation, HitsHandlesBeforeBodiesAndTopmostFirst) {
    const auto lower = rectangle({100, 100, 200, 200});
    const auto upper = rectangle({98, 150, 300, 300}); // its left side runs past the lower one's west handle
    const std::vector both{lower, upper};
    EXPECT_EQ(hit({100, 200}, both), AnnotationHit(ResizeHit{lower.id, RectangleHandle{SelectionHandle::w}}));
    EXPECT_EQ(hit({99, 230}, both), AnnotationHit(MoveHit{upper.id}));
    EXPECT_EQ(hit({150, 102}, both), AnnotationHit(MoveHit{lower.id}));
    EXPECT_FALSE(hit({200, 250}, both)); // inside both, on neither
    // Where two handles are in reach, the first in order wins.
    const auto tiny = rectangle({500, 500, 4, 4});
    EXPECT_EQ(hit({502, 502}, {tiny}),
              AnnotationHit(ResizeHit{tiny.id, RectangleHandle{SelectionHandle::nw}}));
}

TEST(Annotation, OnlyTheOutlineOfARectangleCanBeGrabbed) {
    const auto big = rectangle({200, 200, -100, -100});
    EXPECT_FALSE(hit({150, 150}, {big}));
    EXPECT_EQ(hit({108, 125}, {big}), AnnotationHit(MoveHit{big.id}));
    EXPECT_EQ(hit({92, 125}, {big}), AnnotationHit(MoveHit{big.id}));
    EXPECT_FALSE(hit({109, 125}, {big}));
    EXPECT_FALSE(hit({91, 125}, {big}));
    // Too narrow to have an inside: grabbable everywhere.
    const auto narrow = rectangle({100, 100, 17, 400});
    EXPECT_EQ(hit({108.5, 230}, {narrow}), AnnotationHit(MoveHit{narrow.id}));
}

TEST(Annotation, ArrowsAreHitOnShaftHeadAndEnds) {
    const auto arrow = make(ArrowShape{{100, 100}, {300, 100}});
    EXPECT_EQ(hit({107, 103}, {arrow}), AnnotationHit(ResizeHit{arrow.id, ArrowStart{}}));
    EXPECT_EQ(hit({305, 95}, {arrow}), AnnotationHit(ResizeHit{arrow.id, ArrowEnd{}}));
    EXPECT_EQ(hit({200, 108.5}, {arrow}), AnnotationHit(MoveHit{arrow.id}));
    EXPECT_FALSE(hit({200, 109}, {arrow}));
    EXPECT_EQ(hit({287, 113}, {arrow}), AnnotationHit(MoveHit{arrow.id})) << "a stroke of the head";
    EXPECT_FALSE(hit({270, 113}, {arrow}));
    const auto dot = make(ArrowShape{{50, 50}, {50, 50}});
    EXPECT_EQ(hit({58.4, 50}, {dot}), AnnotationHit(MoveHit{dot.id}))
        << "beyond its ends' reach, on its body";
    EXPECT_FALSE(hit({58.6, 50}, {dot}));
}

TEST(Annotation, TextsAreHitWhereTheirViewsSay) {
    const auto text = make(TextLabel{{10, 10}, "x"});
    const auto contains = [&](Point point, const Uuid& id) { return id == text.id && point.x < 100; };
    EXPECT_EQ(hitTestAnnotation({50, 0}, std::vector{text}, contains), AnnotationHit(MoveHit{text.id}));
    EXPECT_FALSE(hitTestAnnotation({150, 0}, std::vector{text}, contains));
    EXPECT_FALSE(hitTestAnnotation({50, 0}, std::vector{text}, {}));
}

TEST(Annotation, ResizesByTheHandlesOfItsKind) {
    const OverlayAnnotationKind arrow = ArrowShape{{1, 1}, {5, 5}};
    const OverlayAnnotationKind rect = RectangleShape{{100, 100, 50, 50}};
    const AnnotationHandle east = RectangleHandle{SelectionHandle::e};
    EXPECT_EQ(resizedKind(arrow, ArrowStart{}, {9, 9}, {}, screen),
              OverlayAnnotationKind(ArrowShape{{9, 9}, {5, 5}}));
    EXPECT_EQ(resizedKind(arrow, ArrowEnd{}, {9, 9}, {}, screen),
              OverlayAnnotationKind(ArrowShape{{1, 1}, {9, 9}}));
    // From the rectangle at the beginning of the drag, not the current one.
    EXPECT_EQ(resizedKind(rect, east, {300, 0}, Rect{100, 100, 80, 80}, screen),
              OverlayAnnotationKind(RectangleShape{{100, 100, 200, 80}}));
    EXPECT_FALSE(resizedKind(rect, east, {300, 0}, {}, screen));
    EXPECT_FALSE(resizedKind(rect, ArrowEnd{}, {300, 0}, Rect{}, screen));
    EXPECT_FALSE(resizedKind(arrow, east, {300, 0}, Rect{}, screen));
    EXPECT_FALSE(resizedKind(TextLabel{}, east, {300, 0}, Rect{}, screen));
}

TEST(Annotation, MovesWhateverItsKind) {
    EXPECT_EQ(movedKind(RectangleShape{{10, 10, -5, 5}}, {-100, 1}),
              OverlayAnnotationKind(RectangleShape{{-95, 11, 5, 5}}));
    EXPECT_EQ(movedKind(ArrowShape{{1, 1}, {5, 5}}, {1, -1}),
              OverlayAnnotationKind(ArrowShape{{2, 0}, {6, 4}}));
    EXPECT_EQ(movedKind(TextLabel{{1, 1}, " a\n"}, {2, 2}), OverlayAnnotationKind(TextLabel{{3, 3}, " a\n"}));
}

TEST(Arrow, HeadOpensBackwardsByItsHalfAngle) {
    const auto head = arrowHead({0, 0}, {100, 0}, 14);
    ASSERT_TRUE(head);
    const double back = 100 - 14 * std::cos(annotationStyle.arrowheadHalfAngle);
    const double aside = 14 * std::sin(annotationStyle.arrowheadHalfAngle);
    EXPECT_NEAR(distance(head->left, {back, aside}), 0, 1e-9);
    EXPECT_NEAR(distance(head->right, {back, -aside}), 0, 1e-9);
    EXPECT_FALSE(arrowHead({3, 3}, {3, 3}, 14));
}

} // namespace
} // namespace glimmerly
