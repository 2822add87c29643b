#include "bench/support/Sizes.h"
#include "capture/service/CaptureFile.h"
#include "capture/service/ScreenCaptureService.h"
#include "platform/png/PngDecoder.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/x11/X11ScreenCapture.h"
#include "platform/x11/X11Screens.h"
#include "tests/support/ProcessState.h"
#include "tests/support/desktop/XServer.h"

#include <QGuiApplication>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace glimmerly {
namespace {

/// A display of `state`'s height, 16:9, with this process as a Qt program on it.
class Display {
public:
    explicit Display(const benchmark::State& state)
        : server_(std::to_string(state.range(0) * 16 / 9) + "x" + std::to_string(state.range(0)) + "x24"),
          display_("DISPLAY", server_.display().c_str()), application_(argumentCount_, arguments_) {}

private:
    char name_[6] = "bench";
    char* arguments_[2] = {name_, nullptr};
    int argumentCount_ = 1;
    XvfbServer server_;
    ScopedEnvironment display_;
    ScopedEnvironment platform_{"QT_QPA_PLATFORM", "xcb"};
    QGuiApplication application_;
};

/// The server's pixels in a bitmap of ours.
void grab(benchmark::State& state) {
    const Display display(state);
    const auto connection = X11Connection::open().value();
    const PixelRect area = X11Screens(X11Connection::open().value()).screens().at(0).nativeFrame;
    X11Grabber grabber(*connection);
    for (auto _ : state)
        benchmark::DoNotOptimize(grabber.grab(area).value());
}

/// Captures to a file, and waits for it.
class FileCapture {
public:
    /// `use` gets the file once it is written.
    void run(benchmark::State& state, const std::function<void(const std::filesystem::path&)>& use) {
        const auto file = makeCaptureFileURL();
        bool done = false;
        service_.capture(file, [&](const Result<void>& outcome) {
            outcome.value();
            use(file);
            done = true;
        });
        while (!done)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        state.PauseTiming();
        std::filesystem::remove(file);
        state.ResumeTiming();
    }

private:
    QtMainQueue queue_;
    X11Screens screens_{X11Connection::open().value()};
    X11ScreenCapture capture_{X11Connection::open().value(), screens_, queue_};
    ScreenCaptureService service_{screens_, capture_};
};

/// From the request to the capture's file, all stages.
void captureToFile(benchmark::State& state) {
    const Display display(state);
    FileCapture capture;
    for (auto _ : state)
        capture.run(state, [](const auto&) {});
}

/// And on to the decoded picture.
void captureAndReadBack(benchmark::State& state) {
    const Display display(state);
    FileCapture capture;
    for (auto _ : state)
        capture.run(state, [](const auto& file) {
            benchmark::DoNotOptimize(PngDecoder::open(file).value().decode().value());
        });
}

BENCHMARK(grab)->Apply(sizes);
BENCHMARK(captureToFile)->Apply(sizes);
BENCHMARK(captureAndReadBack)->Apply(sizes);

} // namespace
} // namespace glimmerly

BENCHMARK_MAIN();
