#include "bench/support/DesktopPicture.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>

#include <array>
#include <cmath>
#include <random>

namespace glimmerly {

namespace {

const QStringList& words() {
    static const QStringList list =
        QStringLiteral(
            "return const auto window the a selection pixels 1024 capture of display; { } -> if "
            "(frame.isEmpty()) "
            "quick brown fox 3.14159 std::vector<int> // until the next request begins, whatever comes first")
            .split(QLatin1Char(' '));
    return list;
}

/// Smooth light and shade with the grain of a camera.
void fillPhoto(QImage& image, QRect area, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_int_distribution grain(-4, 4);
    const double scale = 7.0 / area.width();
    for (int y = area.top(); y <= area.bottom(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = area.left(); x <= area.right(); ++x) {
            const double u = x * scale + seed;
            const double v = y * scale;
            const double light = std::sin(u + std::sin(v * 1.7)) + 0.5 * std::cos(u * 3.1 + v * 2.3);
            const auto level = [&](double base, double depth) {
                return std::clamp(static_cast<int>(base + depth * light) + grain(random), 0, 255);
            };
            row[x] = qRgb(level(90, 40), level(120, 45), level(150, 50));
        }
    }
}

void drawWindow(QPainter& painter, QRectF frame, double em, bool dark, unsigned seed) {
    std::mt19937 random(seed);
    const QColor paper = dark ? QColor(0x1e, 0x1e, 0x2e) : QColor(0xfd, 0xfd, 0xfd);
    painter.fillRect(frame, paper);
    const QRectF title(frame.left(), frame.top(), frame.width(), em * 2.2);
    QLinearGradient shade(title.topLeft(), title.bottomLeft());
    shade.setColorAt(0, QColor(0xf0, 0xf0, 0xf4));
    shade.setColorAt(1, QColor(0xd0, 0xd2, 0xd8));
    painter.fillRect(title, shade);
    const std::array<QColor, 4> inks{dark ? QColor(0xcd, 0xd6, 0xf4) : QColor(0x20, 0x20, 0x20),
                                     QColor(0x89, 0x60, 0xd0), QColor(0x30, 0x90, 0x60),
                                     QColor(0xd0, 0x70, 0x30)};
    const double lineHeight = em * 1.4;
    const double top = title.bottom() + em * 1.5;
    const int lines = static_cast<int>(std::ceil((frame.bottom() - em - top) / lineHeight));
    for (int line = 0; line < lines; ++line) {
        const double y = top + line * lineHeight;
        double x = frame.left() + em * (1 + static_cast<int>(random() % 3) * 2);
        const double end = frame.left() + frame.width() * (0.3 + 0.006 * static_cast<int>(random() % 100));
        while (x < end) {
            const QString word = words()[static_cast<int>(random() % static_cast<unsigned>(words().size()))];
            painter.setPen(inks[random() % inks.size()]);
            painter.drawText(QPointF(x, y), word);
            x += painter.fontMetrics().horizontalAdvance(word) + em * 0.5;
        }
    }
}

} // namespace

Bitmap desktopPicture(PixelSize size) {
    Bitmap bitmap(size);
    QImage image(reinterpret_cast<uchar*>(bitmap.row(0).data()), size.width, size.height,
                 static_cast<qsizetype>(bitmap.bytesPerRow()), QImage::Format_RGB32);
    const double em = 13;
    fillPhoto(image, image.rect(), 1);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setPixelSize(static_cast<int>(em));
    painter.setFont(font);
    const double w = size.width;
    const double h = size.height;
    QLinearGradient panel(0, 0, w, 0);
    panel.setColorAt(0, QColor(0x28, 0x2c, 0x44));
    panel.setColorAt(1, QColor(0x50, 0x3c, 0x64));
    painter.fillRect(QRectF(0, 0, w, em * 2.4), panel);
    drawWindow(painter, {w * 0.02, h * 0.06, w * 0.46, h * 0.88}, em, true, 2);
    drawWindow(painter, {w * 0.5, h * 0.05, w * 0.47, h * 0.6}, em, false, 3);
    painter.fillRect(QRectF(w * 0.55, h * 0.5, w * 0.4, h * 0.45), QColor(0xee, 0xee, 0xee));
    painter.end();
    fillPhoto(image, QRectF(w * 0.56, h * 0.55, w * 0.38, h * 0.38).toRect(), 4);
    for (int y = 0; y < size.height; ++y) {
        for (Bitmap::Pixel& pixel : bitmap.row(y))
            pixel |= 0xff000000;
    }
    return bitmap;
}

} // namespace glimmerly
