#include "platform/png/PngDecoder.h"
#include "platform/qt/QtPasteboard.h"
#include "tests/platform/x11/ClipboardManager.h"
#include "tests/platform/x11/X11Desktop.h"
#include "tests/support/NoisePicture.h"
#include "tests/support/desktop/XcbClient.h"

#include <QClipboard>
#include <QImage>
#include <QProcess>
#include <gmock/gmock.h>

namespace glimmerly {
namespace {

using testing::Contains;
using testing::Not;

Bitmap decoded(std::string_view png) {
    const auto decoder = PngDecoder::over(std::as_bytes(std::span(png)));
    return decoder ? decoder->decode().value_or(Bitmap()) : Bitmap();
}

Size onePointPerPixel(const Bitmap& picture) {
    return {static_cast<double>(picture.width()), static_cast<double>(picture.height())};
}

/// What another program reads from the clipboard as `target`.
std::string read(const char* target) {
    QProcess reader;
    reader.start("xclip", {"-selection", "clipboard", "-target", target, "-out"});
    EXPECT_TRUE(runUntil([&] { return reader.state() == QProcess::NotRunning; }, 60));
    return reader.readAllStandardOutput().toStdString();
}

PasteboardOutcome write(const Bitmap& picture) {
    return QtPasteboard().writeImage(picture, onePointPerPixel(picture));
}

TEST(Pasteboard, OtherProgramsReadThePixelsOfEverySize) {
    X11Desktop desktop;
    // A property holds 64 KiB with many readers, and a request 16 MiB; beyond it goes in pieces.
    for (const PixelSize size : {PixelSize{1, 1}, PixelSize{200, 200}, PixelSize{2500, 2400}}) {
        const Bitmap picture = noisePicture(size);
        ASSERT_EQ(write(picture), PasteboardOutcome::written);
        const std::string png = read("image/png");
        EXPECT_TRUE(decoded(png) == picture) << size.width << " x " << size.height << ": " << png.size();
    }
}

TEST(Pasteboard, OffersOtherFormatsMadeOnRequest) {
    X11Desktop desktop;
    const Bitmap picture = noisePicture({30, 20});
    ASSERT_EQ(write(picture), PasteboardOutcome::written);
    const QStringList targets = QString::fromStdString(read("TARGETS")).split('\n');
    for (const char* offered : {"image/png", "image/bmp", "image/jpeg", "TIMESTAMP"})
        EXPECT_THAT(targets, Contains(QString(offered)));
    EXPECT_THAT(targets, Not(Contains(QString("application/x-qt-image"))));

    const std::string bmp = read("image/bmp");
    const QImage image =
        QImage::fromData(reinterpret_cast<const uchar*>(bmp.data()), static_cast<int>(bmp.size()));
    EXPECT_EQ(image.size(), QSize(30, 20));
    EXPECT_EQ(image.pixel(29, 19), picture.row(19)[29]);
    const QImage within = QGuiApplication::clipboard()->image();
    EXPECT_EQ(within.pixel(29, 19), picture.row(19)[29]);
}

TEST(Pasteboard, RefusesWhenAnotherProgramWasFaster) {
    X11Desktop desktop;
    ASSERT_EQ(write(noisePicture({2, 2})), PasteboardOutcome::written);
    XcbClient other;
    const auto window = other.open({});
    // Within one millisecond of the server's time nobody is faster.
    EXPECT_TRUE(runUntil([&] {
        xcb_set_selection_owner(other.get(), window, other.atom("CLIPBOARD"), XCB_CURRENT_TIME);
        other.sync();
        return write(noisePicture({2, 2})) == PasteboardOutcome::refused;
    })) << "with the time of an earlier event";
}

TEST(Pasteboard, LetsGoOfThePixelsOnceTheyAreEncoded) {
    X11Desktop desktop;
    auto pixels = std::make_shared<std::vector<Bitmap::Pixel>>(1000 * 1000, 0xff123456u);
    const std::weak_ptr<void> alive = pixels;
    {
        const Bitmap capture({1000, 1000}, 1000, pixels->data(), pixels);
        ASSERT_EQ(write(capture.view({10, 10, 5, 5})), PasteboardOutcome::written);
    }
    pixels.reset();
    EXPECT_TRUE(runUntil([&] { return alive.expired(); }));
    EXPECT_EQ(decoded(read("image/png")).row(4)[4], 0xff123456u);
}

TEST(Pasteboard, AClipboardManagerHasThePictureAfterTheProgramsEnd) {
    X11Desktop desktop;
    ClipboardManager manager;
    const Bitmap picture = noisePicture({1200, 800}); // too large for one piece of 64 KiB
    ASSERT_EQ(write(picture), PasteboardOutcome::written);
    desktop.application.reset();
    EXPECT_TRUE(decoded(manager.savedPng()) == picture);
}

} // namespace
} // namespace glimmerly
