#pragma once

#include "overlay/toolbar/OverlayToolbarView.h"
#include "tests/support/Widgets.h"
#include "ui/QtConversions.h"

#include <QMouseEvent>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace glimmerly {

/// Stands for the canvas: hears what the toolbar lets through.
class CanvasStandIn : public QWidget {
public:
    CanvasStandIn() {
        setMouseTracking(true);
        resize(700, 200);
    }
    std::vector<QPoint> presses;
    int moves = 0;

protected:
    void mousePressEvent(QMouseEvent* event) override { presses.push_back(event->position().toPoint()); }
    void mouseMoveEvent(QMouseEvent*) override { ++moves; }
};

/// A toolbar on a shown canvas, driven by the mouse events of their window; everything it reports is noted.
class ToolbarFixture : public testing::Test {
protected:
    void SetUp() override {
        toolbar.move(50, 60);
        canvas.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&canvas));
        moveTo(outside);
        const auto note = [this](const char* what) { return [this, what] { reports.emplace_back(what); }; };
        toolbar.onHandleDragStateChanged = [this](bool isDragging) {
            reports.emplace_back(isDragging ? "drag" : "drop");
        };
        toolbar.onHandleDragDelta = [this](double dx, double dy) { deltas.push_back({dx, dy}); };
        toolbar.onToolChanged = [this](auto tool) {
            reports.push_back("tool " + std::string(tool ? rawValue(*tool) : "none"));
        };
        toolbar.onColorChanged = [this](auto option) {
            reports.push_back("color " + std::string(option ? option->id : "none"));
        };
        toolbar.onUndoTapped = note("undo");
        toolbar.onRedoTapped = note("redo");
        toolbar.onCloseTapped = note("close");
        toolbar.onDownloadTapped = note("download");
        toolbar.onDoneTapped = note("done");
    }

    ToolbarIconButton& button(std::string_view name) {
        return widgetNamed<ToolbarIconButton>(toQString(name), toolbar);
    }
    [[nodiscard]] QPoint centerOf(const QWidget& part) const {
        return part.mapTo(&canvas, QPoint(part.width() / 2, part.height() / 2));
    }
    QPoint centerOf(std::string_view name) { return centerOf(button(name)); }

    void moveTo(QPoint position) { QTest::mouseMove(canvas.windowHandle(), position); }
    void press(QPoint position) {
        moveTo(position);
        QTest::mousePress(canvas.windowHandle(), Qt::LeftButton, {}, position);
    }
    void release(QPoint position) {
        QTest::mouseRelease(canvas.windowHandle(), Qt::LeftButton, {}, position);
    }
    void click(std::string_view name) {
        press(centerOf(name));
        release(centerOf(name));
    }
    /// What was reported since the last call.
    std::vector<std::string> takeReports() { return std::exchange(reports, {}); }

    static constexpr QPoint outside{5, 5};
    CanvasStandIn canvas;
    OverlayToolbarView toolbar{&canvas};
    std::vector<std::string> reports;
    std::vector<Point> deltas;
};

} // namespace glimmerly
