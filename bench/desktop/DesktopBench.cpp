// Measures the way from the key press to the clipboard with the real program on a virtual desktop: a table
// of medians for each size of display.   glimmerly_bench [rounds]
#include "bench/desktop/ClipboardReader.h"
#include "bench/desktop/Measurements.h"
#include "bench/desktop/OverlayWatch.h"
#include "bench/desktop/ScreenFloor.h"
#include "bench/support/DesktopPicture.h"
#include "tests/e2e/support/Session.h"

#include <QGuiApplication>
#include <fmt/format.h>

#include <iostream>
#include <sstream>

namespace glimmerly::bench {
namespace {

/// The moment at which the last line with that message was written.
Stopwatch::Clock::time_point lastLogged(const e2e::Glimmerly& program, std::string_view message) {
    std::tm parts{};
    int fraction = 0;
    std::istringstream(program.log(message).back().value("ts", "")) >>
        std::get_time(&parts, "%Y-%m-%dT%T.") >> fraction;
    return Stopwatch::Clock::from_time_t(timegm(&parts)) + std::chrono::milliseconds(fraction);
}

constexpr PixelSize largest{3840, 2160};

class DesktopBench {
public:
    explicit DesktopBench(PixelSize size)
        : session_({.size = size}), watchClient_(session_.desktop.server().display()),
          readerClient_(session_.desktop.server().display()), watch_(watchClient_), reader_(readerClient_) {
        session_.desktop.client().setBackground(desktopPicture(size));
    }

    Measurements run(int rounds) {
        for (int round = 0; round < rounds; ++round) {
            const auto floor = measureScreenFloor(session_.desktop.client());
            results_.add("floor", floor.total);
            results_.add("  of which grabbing", floor.grab);
            session_.robot.waitForKeyboard();
            watch_.waitForRest();
            openOverlay();
            copyWholeDisplay();
        }
        if (session_.desktop.client().size() == largest) {
            results_.setGoal("key press to overlay painted", 12);
            results_.setGoal("Return to whole image/png read by another program", 20);
        }
        return results_;
    }

private:
    void openOverlay() {
        const Stopwatch watch;
        session_.robot.type({Key::super, Key::leftShift, Key::a});
        const auto times = watch_.waitForOverlay(watch);
        if (!times)
            throw std::runtime_error("no overlay appeared");
        watch_.waitForRest();
        const auto logged = [&](std::string_view message) {
            return watch.millisecondsAt(lastLogged(session_.program, message));
        };
        results_.add("key press to request (by the log)",
                     logged("Registered global screenshot hotkey pressed"));
        results_.add("key press to capture file written (by the log)",
                     logged("Capture succeeded; presenting overlay"));
        results_.add("key press to overlay mapped", times->mapped);
        results_.add("key press to overlay painted", times->painted);
    }

    void copyWholeDisplay() {
        const auto size = session_.desktop.client().size();
        session_.robot.drag({0, 0}, {size.width - 1, size.height - 1});
        watch_.waitForRest();
        reader_.arm();
        const Stopwatch watch;
        session_.robot.type({Key::returnKey});
        const auto times = reader_.waitForPicture(watch);
        if (!times || !session_.waitForNoOverlay())
            throw std::runtime_error("no picture on the clipboard");
        results_.add("Return to clipboard owned", times->owned);
        results_.add("Return to whole image/png read by another program", times->read);
        watch_.waitForRest();
    }

    e2e::Session session_;
    XClient watchClient_;
    XClient readerClient_;
    OverlayWatch watch_;
    ClipboardReader reader_;
    Measurements results_;
};

} // namespace
} // namespace glimmerly::bench

int main(int argc, char** argv) {
    using namespace glimmerly::bench;
    qputenv("QT_QPA_PLATFORM", "offscreen"); // for the fonts of the desktop's picture
    const QGuiApplication application(argc, argv);
    const int rounds = argc > 1 ? std::stoi(argv[1]) : 15;
    for (const glimmerly::PixelSize size : {glimmerly::PixelSize{1920, 1080}, largest}) {
        std::cout << fmt::format("{} x {}, {} rounds; a floor is grabbing the screen and putting it back\n",
                                 size.width, size.height, rounds)
                  << DesktopBench(size).run(rounds).table() << '\n'
                  << std::flush;
    }
}
