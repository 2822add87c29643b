#include "overlay/model/AnnotationEditing.h"
#include "overlay/model/AnnotationHitTest.h"
#include "overlay/model/AnnotationPalette.h"

#include <gtest/gtest.h>

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

TEST(Annotation, IsHitOnItsLinesAndHandlesWithinTheirReach) {
    const auto big = rectangle({200, 200, -100, -100});
    const auto narrow = rectangle({100, 100, 17, 400}); // too narrow to have an inside
    const auto arrow = make(ArrowShape{{100, 100}, {300, 100}});
    const auto dot = make(ArrowShape{{50, 50}, {50, 50}});
    const struct {
        const char* what;
        Point point;
        const OverlayAnnotation& annotation;
        std::optional<AnnotationHit> expected;
    } cases[] = {
        {"inside a rectangle", {150, 150}, big, std::nullopt},
        {"inside, by its side", {108, 125}, big, MoveHit{big.id}},
        {"inside, too far", {109, 125}, big, std::nullopt},
        {"outside, by its side", {92, 125}, big, MoveHit{big.id}},
        {"outside, too far", {91, 125}, big, std::nullopt},
        {"in the middle of a narrow one", {108.5, 230}, narrow, MoveHit{narrow.id}},
        {"an arrow's start", {107, 103}, arrow, ResizeHit{arrow.id, ArrowStart{}}},
        {"its end", {305, 95}, arrow, ResizeHit{arrow.id, ArrowEnd{}}},
        {"its shaft", {200, 108.5}, arrow, MoveHit{arrow.id}},
        {"beside its shaft", {200, 109}, arrow, std::nullopt},
        {"a stroke of its head", {287, 113}, arrow, MoveHit{arrow.id}},
        {"behind its head", {270, 113}, arrow, std::nullopt},
        {"a dot, beyond its ends' reach", {58.4, 50}, dot, MoveHit{dot.id}},
        {"beside a dot", {58.6, 50}, dot, std::nullopt},
    };
    for (const auto& [what, point, annotation, expected] : cases)
        EXPECT_EQ(hit(point, {annotation}), expected) << what;
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

} // namespace
} // namespace glimmerly
