#include "bench/support/DesktopPicture.h"
#include "bench/support/Sizes.h"
#include "overlay/export/OverlayCanvasSelectionExport.h"
#include "overlay/model/AnnotationPalette.h"
#include "platform/files/AtomicFile.h"
#include "platform/files/Directories.h"
#include "platform/memory/DisplayBitmap.h"
#include "platform/png/PngDecoder.h"
#include "platform/png/PngEncoder.h"
#include "platform/png/StoredPng.h"

#include <QGuiApplication>
#include <benchmark/benchmark.h>
#include <png.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <vector>

namespace glimmerly {
namespace {

/// The picture of `state`'s height, 16:9, made once.
const Bitmap& pictureFor(const benchmark::State& state) {
    static std::map<int, Bitmap> made;
    const auto height = static_cast<int>(state.range(0));
    Bitmap& picture = made[height];
    if (picture.isNull())
        picture = desktopPicture({height * 16 / 9, height});
    return picture;
}

/// A hundred rectangles and arrows all over a display of that size at scale 1.
std::vector<OverlayAnnotation> hundredShapes(Size size) {
    std::vector<OverlayAnnotation> shapes;
    for (int i = 0; i < 100; ++i) {
        const int row = i / 10;
        const Point corner{(i % 10) * size.width / 10 + 20, row * size.height / 10 + 20};
        const Point opposite = corner + Point{size.width / 12, size.height / 12};
        OverlayAnnotationKind kind = ArrowShape{corner, opposite};
        if (i % 2 == 0)
            kind = RectangleShape{Rect::fromCorners(corner, opposite)};
        const auto& colour = annotationPalette.at(static_cast<std::size_t>(i) % annotationPalette.size());
        shapes.push_back({Uuid::generate(), kind, colour.color});
    }
    return shapes;
}

/// What the overlay exports of the whole display with a hundred shapes on it.
Bitmap annotated(const Bitmap& picture) {
    const Size size{static_cast<double>(picture.width()), static_cast<double>(picture.height())};
    const auto shapes = hundredShapes(size);
    const Rect all{0, 0, size.width, size.height};
    return croppedSelectionImage(
               {.selection = all, .image = OverlayImage{picture, size}, .annotations = shapes, .bounds = all})
        .value();
}

/// From Done to the bytes on the clipboard, and the same as compact as a saved file, and that file written.
void doneWithHundredShapes(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(encodePng(annotated(pictureFor(state)), PngProfile::quick).value().size());
}

void downloadWithHundredShapes(benchmark::State& state) {
    const auto file = temporaryDirectory().value() / "glimmerly-bench-download.png";
    for (auto _ : state) {
        if (!writeCroppedImagePNG(annotated(pictureFor(state)), file))
            state.SkipWithError("not written");
    }
    state.counters["KiB"] = static_cast<double>(std::filesystem::file_size(file)) / 1024;
    std::filesystem::remove(file);
}

std::filesystem::path captureFile() {
    return temporaryDirectory().value() / "glimmerly-bench.png";
}

void writeCapture(const Bitmap& picture) {
    const auto png = StoredPng::of(picture).value();
    writeFileAtomically(captureFile(), [&](const FileDescriptor& file) { return png.writeTo(file); }).value();
}

/// A capture on its way to its file.
void captureFileWrite(benchmark::State& state) {
    const Bitmap& picture = pictureFor(state);
    for (auto _ : state) {
        writeCapture(picture);
        state.PauseTiming();
        std::filesystem::remove(captureFile());
        state.ResumeTiming();
    }
}

/// And back, into new memory each time.
void captureFileRead(benchmark::State& state) {
    writeCapture(pictureFor(state));
    for (auto _ : state) {
        const Bitmap picture = PngDecoder::open(captureFile()).value().decode().value();
        benchmark::DoNotOptimize(picture.row(0).data());
    }
    std::filesystem::remove(captureFile());
}

void encode(benchmark::State& state, PngProfile profile) {
    const Bitmap& picture = pictureFor(state);
    std::size_t size = 0;
    for (auto _ : state)
        size = encodePng(picture, profile).value().size();
    state.counters["KiB"] = static_cast<double>(size) / 1024;
}

void decode(benchmark::State& state, PngProfile profile) {
    const auto file = encodePng(pictureFor(state), profile).value();
    for (auto _ : state) {
        const Bitmap picture = PngDecoder::over(file.span()).value().decode().value();
        benchmark::DoNotOptimize(picture.row(0).data());
    }
}

/// What the reference library makes of the same picture, its rows packed already, at its default level.
void libPngLevel6(benchmark::State& state, Bitmap (*drawOn)(const Bitmap&)) {
    const Bitmap picture = drawOn(pictureFor(state));
    const auto width = static_cast<std::size_t>(picture.width());
    std::vector<png_byte> rgb;
    for (int y = 0; y < picture.height(); ++y) {
        for (const Bitmap::Pixel pixel : picture.row(y)) {
            for (const int shift : {16, 8, 0})
                rgb.push_back(static_cast<png_byte>(pixel >> shift));
        }
    }
    std::vector<png_byte> out;
    for (auto _ : state) {
        out.clear();
        png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
        png_infop info = png_create_info_struct(png);
        const auto append = [](png_structp writer, png_bytep bytes, std::size_t count) {
            auto& to = *static_cast<std::vector<png_byte>*>(png_get_io_ptr(writer));
            to.insert(to.end(), bytes, bytes + count);
        };
        png_set_write_fn(png, &out, append, nullptr);
        png_set_compression_level(png, 6);
        png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(picture.height()),
                     8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                     PNG_FILTER_TYPE_DEFAULT);
        png_write_info(png, info);
        for (std::size_t y = 0; y < static_cast<std::size_t>(picture.height()); ++y)
            png_write_row(png, &rgb[y * width * 3]);
        png_write_end(png, nullptr);
        png_destroy_write_struct(&png, &info);
    }
    state.counters["KiB"] = static_cast<double>(out.size()) / 1024;
}

BENCHMARK(captureFileWrite)->Apply(sizes);
BENCHMARK(captureFileRead)->Apply(sizes);
BENCHMARK_CAPTURE(encode, quick, PngProfile::quick)->Apply(sizes);
BENCHMARK_CAPTURE(encode, compact, PngProfile::compact)->Apply(sizes);
BENCHMARK_CAPTURE(libPngLevel6, display, [](const Bitmap& picture) { return picture; })->Apply(sizes);
BENCHMARK(doneWithHundredShapes)->Apply(sizes);
BENCHMARK(downloadWithHundredShapes)->Apply(sizes);
BENCHMARK_CAPTURE(libPngLevel6, hundredShapes, annotated)->Apply(sizes);
BENCHMARK_CAPTURE(decode, quick, PngProfile::quick)->Apply(sizes);
BENCHMARK_CAPTURE(decode, compact, PngProfile::compact)->Apply(sizes);

} // namespace
} // namespace glimmerly

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
