// Measures drags in an overlay of 3840 x 2160 with a hundred annotations, from the pointer's motion to the
// repaint of the real program on a virtual desktop, and what Done makes of it.
//     glimmerly_bench_editor [motions]
#include "bench/desktop/ClipboardReader.h"
#include "bench/desktop/Measurements.h"
#include "bench/desktop/RepaintWatch.h"
#include "bench/desktop/ScreenFloor.h"
#include "bench/support/DesktopPicture.h"
#include "tests/e2e/support/Editor.h"

#include <QGuiApplication>
#include <fmt/format.h>

#include <iostream>

namespace glimmerly::bench {
namespace {

constexpr PixelSize size{3840, 2160};
constexpr Pixel topLeft{40, 40};
constexpr Pixel bottomRight{3800, 2040}; ///< leaves room for the bar

/// The display's annotations stand in ten rows of ten, each in a cell of its own: four rows of rectangles,
/// four of arrows, two of texts.
struct Cell {
    int column;
    int row;

    [[nodiscard]] Point corner() const { return {100.0 + 370 * column, 80.0 + 190 * row}; }
    [[nodiscard]] Point opposite() const { return corner() + Point{270, 130}; }
};
constexpr int columns = 10;

class EditorBench {
public:
    EditorBench()
        : session_({.size = size}), watchClient_(session_.desktop.server().display()),
          readerClient_(session_.desktop.server().display()), reader_(readerClient_) {
        session_.desktop.client().setBackground(desktopPicture(size));
    }

    void run(int motions) {
        for (int round = 0; round < 15; ++round)
            results_.add("floor", measureScreenFloor(session_.desktop.client()).total);
        openOverlay();
        draw();
        measureDrag("a selection's handle", bottomRight, motions);
        measureDrag("a rectangle", Cell{5, 2}.corner() + Point{67, 0}, motions); // between two of its handles
        measureDrag("an arrow", Cell{5, 6}.corner() + Point{135, 65}, motions);
        measureDrag("a text", Cell{5, 8}.corner() + Point{20, 0}, motions);
        copyWholeDisplay();
    }
    [[nodiscard]] std::string report() const { return results_.table() + bytes_; }

private:
    static void require(const testing::AssertionResult& outcome) {
        if (!outcome)
            throw std::runtime_error(outcome.message());
    }
    static Point pointOf(Pixel pixel) { return {double(pixel.x), double(pixel.y)}; }

    void openOverlay() {
        require(session_.openOverlay());
        require(editor_.select(pointOf(topLeft), pointOf(bottomRight)));
    }

    void draw() const {
        const auto drawRows = [](int from, int to, auto drawOne) {
            for (int row = from; row < to; ++row) {
                for (int column = 0; column < columns; ++column)
                    drawOne(Cell{column, row});
            }
        };
        const auto drag = [this](Cell cell) { editor_.drag(cell.corner(), cell.opposite()); };
        editor_.tap("Rectangle tool");
        drawRows(0, 4, drag);
        editor_.tap("Blue");
        editor_.tap("Arrow tool");
        drawRows(4, 8, drag);
        editor_.tap("Text tool");
        drawRows(8, 10, [this](Cell cell) {
            editor_.click(cell.corner());
            session_.robot.typeText("one of twenty texts");
        });
        editor_.tap("Text tool"); // off again, which ends the typing
        require(editor_.waitForPainting());
    }

    /// Drags what is at `start` to and fro, one motion after the other's repaint.
    void measureDrag(const std::string& what, auto start, int motions) {
        const RepaintWatch watch(watchClient_, session_.program.overlays().front());
        const Pixel from{static_cast<int>(start.x), static_cast<int>(start.y)};
        session_.robot.moveTo(from);
        session_.robot.pressButton();
        double bytes = 0;
        for (int i = 0; i <= motions; ++i) {
            constexpr int turn = 25;
            const int step = 1 + std::abs((i + turn) % (2 * turn) - turn);
            const auto repaint =
                watch.repaintAfter([&] { session_.robot.moveTo({from.x - 7 * step, from.y - 5 * step}); });
            if (!repaint)
                throw std::runtime_error("nothing is repainted while dragging " + what);
            if (i == 0) // takes hold of it first
                continue;
            results_.add(what + " dragged: repaint begins", repaint->first);
            results_.add("  " + what + ": repaint complete", repaint->last);
            bytes += repaint->bytes / motions;
        }
        session_.robot.moveTo(from);
        session_.robot.releaseButton();
        results_.setGoal(what + " dragged: repaint begins", 0.3, 1.2);
        bytes_ += fmt::format("  dragging {} repaints {:.0f} KiB per motion\n", what, bytes / 1024);
    }

    void copyWholeDisplay() {
        editor_.drag(pointOf(topLeft), {0, 0});
        editor_.drag(pointOf(bottomRight), {size.width - 1.0, size.height - 1.0});
        session_.robot.waitForKeyboard();
        reader_.arm();
        const Stopwatch watch;
        session_.robot.type({Key::returnKey});
        const auto times = reader_.waitForPicture(watch);
        if (!times)
            throw std::runtime_error("no picture on the clipboard");
        results_.add("Return to clipboard owned", times->owned);
        results_.add("Return to whole image/png read by another program", times->read);
        require(session_.waitForNoOverlay());
    }

    e2e::Session session_;
    e2e::Editor editor_{session_, 1};
    XClient watchClient_;
    XClient readerClient_;
    ClipboardReader reader_;
    Measurements results_;
    std::string bytes_;
};

} // namespace
} // namespace glimmerly::bench

int main(int argc, char** argv) {
    using namespace glimmerly::bench;
    qputenv("QT_QPA_PLATFORM", "offscreen"); // for the fonts of the desktop's picture
    const QGuiApplication application(argc, argv);
    const int motions = argc > 1 ? std::stoi(argv[1]) : 400;
    EditorBench bench;
    bench.run(motions);
    std::cout << fmt::format("{} x {} with a hundred annotations, {} motions a drag\n", size.width,
                             size.height, motions)
              << bench.report() << '\n';
}
