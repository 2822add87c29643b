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

/// From the request to the capture's file, all stages.
void captureToFile(benchmark::State& state) {
    const Display display(state);
    QtMainQueue queue;
    const X11Screens screens(X11Connection::open().value());
    X11ScreenCapture capture(X11Connection::open().value(), screens, queue);
    ScreenCaptureService service(screens, capture);
    for (auto _ : state) {
        const auto file = makeCaptureFileURL();
        bool done = false;
        service.capture(file, [&](const Result<void>& outcome) {
            outcome.value();
            done = true;
        });
        while (!done)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        state.PauseTiming();
        std::filesystem::remove(file);
        state.ResumeTiming();
    }
}

/// And on to the decoded picture.
void captureAndReadBack(benchmark::State& state) {
    const Display display(state);
    QtMainQueue queue;
    const X11Screens screens(X11Connection::open().value());
    X11ScreenCapture capture(X11Connection::open().value(), screens, queue);
    ScreenCaptureService service(screens, capture);
    for (auto _ : state) {
        const auto file = makeCaptureFileURL();
        Bitmap picture;
        service.capture(file, [&](const Result<void>& outcome) {
            outcome.value();
            picture = PngDecoder::open(file).value().decode().value();
        });
        while (picture.isNull())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        state.PauseTiming();
        std::filesystem::remove(file);
        picture = {};
        state.ResumeTiming();
    }
}

void sizes(benchmark::internal::Benchmark* bench) {
    const auto least = [](const std::vector<double>& times) { return std::ranges::min(times); };
    bench->Arg(1080)->Arg(2160)->ArgName("height")->Unit(benchmark::kMillisecond);
    bench->UseRealTime()->MeasureProcessCPUTime();
    bench->Iterations(1)->Repetitions(20)->ReportAggregatesOnly()->ComputeStatistics("min", least);
}

BENCHMARK(grab)->Apply(sizes);
BENCHMARK(captureToFile)->Apply(sizes);
BENCHMARK(captureAndReadBack)->Apply(sizes);

} // namespace
} // namespace glimmerly

BENCHMARK_MAIN();
