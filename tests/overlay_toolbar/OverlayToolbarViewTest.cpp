#include "tests/overlay_toolbar/ToolbarFixture.h"

#include <QLineEdit>
#include <gmock/gmock.h>

namespace glimmerly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OverlayToolbarViewTest : public ToolbarFixture {};

TEST_F(OverlayToolbarViewTest, HoldsItsPartsAtTheSizesThatAddUpToTheBar) {
    EXPECT_EQ(toolbar.size(), QSize(509, 44));
    struct Place {
        const char* name;
        int x;
    };
    constexpr Place places[] = {
        {"Rectangle tool", 39}, {"Arrow tool", 71}, {"Text tool", 103}, {"Red", 144},   {"Green", 176},
        {"Blue", 208},          {"Yellow", 240},    {"White", 272},     {"Black", 304}, {"Undo", 345},
        {"Redo", 377},          {"Close", 409},     {"Download", 441},  {"Done", 473},
    };
    for (const Place& place : places)
        EXPECT_EQ(button(place.name).geometry(), QRect(place.x, 8, 28, 28)) << place.name;
}

TEST_F(OverlayToolbarViewTest, ATurnedOnToolBringsRedAndReportsTheColorFirst) {
    click("Arrow tool");
    EXPECT_THAT(takeReports(), ElementsAre("color red", "tool arrow"));
    click("Text tool");
    EXPECT_THAT(takeReports(), ElementsAre("tool text"));
    EXPECT_FALSE(button("Arrow tool").isOn());
    click("Text tool");
    EXPECT_THAT(takeReports(), ElementsAre("tool none"));
    EXPECT_EQ(toolbar.selectedColorOption()->id, "red");
}

TEST_F(OverlayToolbarViewTest, AColorGoesOutOnlyWhileNoToolIsLit) {
    click("Blue");
    click("Blue");
    EXPECT_THAT(takeReports(), ElementsAre("color blue", "color none"));
    click("Rectangle tool");
    click("White");
    click("White");
    EXPECT_THAT(takeReports(), ElementsAre("color red", "tool rectangle", "color white", "color white"));
    EXPECT_TRUE(button("White").isOn());
}

TEST_F(OverlayToolbarViewTest, TheOwnersChoiceIsLitAndReportedOnce) {
    click("Arrow tool");
    takeReports();
    toolbar.setSelectedColor("blue");
    toolbar.setSelectedTool(SelectionTool::text);
    EXPECT_THAT(takeReports(), ElementsAre("color blue", "tool text"));
    EXPECT_FALSE(button("Red").isOn());
    toolbar.setSelectedTool(std::nullopt);
    toolbar.setSelectedColor("mauve");
    EXPECT_THAT(takeReports(), IsEmpty());
    EXPECT_FALSE(toolbar.selectedTool());
    EXPECT_FALSE(toolbar.selectedColorOption());
}

TEST_F(OverlayToolbarViewTest, ActionsReportThemselvesAndNeverStayLit) {
    for (const char* name : {"Undo", "Redo", "Close", "Download", "Done"}) {
        click(name);
        EXPECT_FALSE(button(name).isOn());
    }
    EXPECT_THAT(takeReports(), ElementsAre("undo", "redo", "close", "download", "done"));
    toolbar.onUndoTapped = nullptr;
    click("Undo");
    EXPECT_THAT(takeReports(), IsEmpty());
}

TEST_F(OverlayToolbarViewTest, SurvivesACallbackThatDeletesIt) {
    auto* doomed = new OverlayToolbarView(&canvas);
    doomed->move(50, 120);
    doomed->show();
    const std::string alive = "captured by the callback";
    doomed->onCloseTapped = [this, doomed, alive] {
        delete doomed;
        reports.push_back(alive);
    };
    const QPoint close = QPoint(50, 120) + QPoint(409 + 14, 22);
    press(close);
    release(close);
    EXPECT_THAT(takeReports(), ElementsAre("captured by the callback"));
}

TEST_F(OverlayToolbarViewTest, KeepsTheFocusWhereItIsAndLetsPressesBesideItsButtonsThrough) {
    QLineEdit editor(&canvas);
    editor.show();
    canvas.activateWindow();
    editor.setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return editor.hasFocus(); }, 5000));
    click("Undo");
    press(toolbar.pos() + QPoint(32, 22));
    release(toolbar.pos() + QPoint(32, 22));
    EXPECT_TRUE(editor.hasFocus());
    EXPECT_THAT(canvas.presses, ElementsAre(toolbar.pos() + QPoint(32, 22)));
}

TEST_F(OverlayToolbarViewTest, TheCursorTellsWhatIsUnderIt) {
    const auto cursorOver = [this](QPoint position) {
        moveTo(position);
        return canvas.childAt(position)->cursor().shape();
    };
    EXPECT_EQ(cursorOver(toolbar.pos() + QPoint(17, 22)), Qt::OpenHandCursor);
    EXPECT_EQ(cursorOver(toolbar.pos() + QPoint(32, 22)), Qt::ArrowCursor);
    EXPECT_EQ(cursorOver(centerOf("Text tool")), Qt::PointingHandCursor);
    EXPECT_EQ(cursorOver(toolbar.pos() + QPoint(2, 2)), Qt::ArrowCursor);
    EXPECT_EQ(cursorOver(centerOf("Done")), Qt::PointingHandCursor);
    moveTo(outside);
    EXPECT_EQ(toolbar.cursor().shape(), Qt::ArrowCursor);
    EXPECT_GT(canvas.moves, 4) << "the canvas follows the pointer over the bar too";
}

TEST_F(OverlayToolbarViewTest, LinesFallOnWholePixelsAtEveryScale) {
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0}) {
        QImage picture((QSizeF(toolbar.size() + QSize(2, 2)) * scale).toSize(), QImage::Format_RGB32);
        picture.setDevicePixelRatio(scale);
        picture.fill(Qt::white);
        toolbar.render(&picture, QPoint(1, 1));
        const auto darkRunAlong = [&](QPointF from, QPointF to) {
            std::vector<int> levels;
            for (QPoint at = (from * scale).toPoint(); at != (to * scale).toPoint();
                 at += QPoint(from.x() < to.x() ? 1 : 0, from.y() < to.y() ? 1 : 0))
                if (const int level = picture.pixelColor(at).red(); level != 255)
                    levels.push_back(level);
            return levels;
        };
        const auto pixels = static_cast<std::size_t>(scale);
        EXPECT_EQ(darkRunAlong({30, 22}, {36, 22}), std::vector<int>(pixels, 224)) << "separator, " << scale;
        EXPECT_EQ(darkRunAlong({200, 0}, {200, 6}), std::vector<int>(pixels, 235)) << "border, " << scale;
    }
}

} // namespace
} // namespace glimmerly
