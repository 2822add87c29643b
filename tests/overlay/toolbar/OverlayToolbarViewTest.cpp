#include "tests/overlay/toolbar/ToolbarFixture.h"

#include <QLineEdit>
#include <gmock/gmock.h>

namespace glimmerly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OverlayToolbarViewTest : public ToolbarFixture {
protected:
    [[nodiscard]] std::vector<std::string> litButtons() const {
        std::vector<std::string> names;
        for (const auto* each : toolbar.findChildren<ToolbarIconButton*>()) {
            if (each->isOn())
                names.push_back(each->accessibleName().toStdString());
        }
        return names;
    }
};

TEST_F(OverlayToolbarViewTest, PressesLightOneToolAndOneColourAndReportThem) {
    EXPECT_EQ(toolbar.size(), QSize(509, 44));
    // One after the other on one bar.
    const struct {
        std::vector<const char*> pressed;
        std::vector<std::string> reported;
        std::vector<const char*> lit;
    } steps[] = {
        {{"Blue", "Blue"}, {"color blue", "color none"}, {}},
        {{"Arrow tool"}, {"color red", "tool arrow"}, {"Arrow tool", "Red"}},
        {{"Text tool"}, {"tool text"}, {"Text tool", "Red"}},
        {{"White", "White"}, {"color white", "color white"}, {"Text tool", "White"}},
        {{"Text tool"}, {"tool none"}, {"White"}},
        {{"White"}, {"color none"}, {}},
        {{"Undo", "Redo", "Close", "Download", "Done"}, {"undo", "redo", "close", "download", "done"}, {}},
    };
    for (const auto& [pressed, reported, lit] : steps) {
        for (const char* name : pressed)
            click(name);
        EXPECT_EQ(takeReports(), reported);
        EXPECT_EQ(litButtons(), std::vector<std::string>(lit.begin(), lit.end()));
    }
    toolbar.onUndoTapped = nullptr;
    click("Undo");
    EXPECT_THAT(takeReports(), IsEmpty());
}

TEST_F(OverlayToolbarViewTest, TheOwnersChoiceIsLitAndReportedOnce) {
    click("Arrow tool");
    takeReports();
    toolbar.setSelectedColor("blue");
    toolbar.setSelectedTool(SelectionTool::text);
    EXPECT_THAT(takeReports(), ElementsAre("color blue", "tool text"));
    EXPECT_THAT(litButtons(), ElementsAre("Text tool", "Blue"));
    toolbar.setSelectedTool(std::nullopt);
    toolbar.setSelectedColor("mauve");
    EXPECT_THAT(takeReports(), IsEmpty());
    EXPECT_THAT(litButtons(), IsEmpty());
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
