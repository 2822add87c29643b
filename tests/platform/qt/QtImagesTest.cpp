#include "platform/qt/QtImages.h"

#include "platform/qt/PictureIconEngine.h"
#include "tests/support/Widgets.h"

#include <QApplication>
#include <QIcon>
#include <QPalette>
#include <QPixmap>
#include <gtest/gtest.h>

namespace glimmerly {
namespace {

constexpr std::array symbols{"viewfinder.rectangular", "gearshape", "arrow.clockwise.circle", "power",
                             "hare.fill"};

/// How much of `picture` is painted, from 0 to 1.
double coverage(const QImage& picture) {
    double sum = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            sum += qAlpha(picture.pixel(x, y));
    }
    return sum / 255 / picture.width() / picture.height();
}

TEST(QtImagesTest, SymbolsKeepTheirSizeInPointsAtEveryScale) {
    for (const char* name : symbols) {
        const auto icon = QtImages().templateSymbol(name, {13, SymbolWeight::regular});
        ASSERT_TRUE(icon) << name;
        for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
            const QImage picture = icon->pixmap(QSize(16, 16), scale).toImage();
            const int side = static_cast<int>(16 * scale);
            EXPECT_EQ(picture.size(), QSize(side, side)) << name;
            const QRect painted = inkOf(picture, Qt::transparent);
            EXPECT_GE(painted.width(), side * 3 / 4) << name << " at " << scale;
            EXPECT_GT(coverage(picture), 0.1) << name;
            EXPECT_LT(coverage(picture), 0.6) << name;
        }
        // In a larger place it stays as large as text of that size.
        EXPECT_LE(inkOf(icon->pixmap(QSize(64, 64), 1.0).toImage(), Qt::transparent).width(), 16) << name;
    }
    EXPECT_FALSE(QtImages().templateSymbol("no.such.symbol", {}));
    EXPECT_FALSE(QtImages().templateImage("NoSuchImage"));
}

TEST(QtImagesTest, WeightThickensTheStrokes) {
    double previous = 0;
    for (const auto weight : {SymbolWeight::regular, SymbolWeight::medium, SymbolWeight::semibold}) {
        const auto icon = QtImages().templateSymbol("power", {13, weight});
        ASSERT_TRUE(icon);
        const double painted = coverage(icon->pixmap(QSize(16, 16), 2.0).toImage());
        EXPECT_GT(painted, previous * 1.1);
        previous = painted;
    }
}

TEST(QtImagesTest, TemplatesTakeTheColourOfTheTextBesideThem) {
    const QPalette before = QApplication::palette();
    QPalette palette = before;
    palette.setColor(QPalette::Active, QPalette::WindowText, QColor(10, 200, 30));
    palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(90, 90, 90));
    palette.setColor(QPalette::Active, QPalette::HighlightedText, QColor(250, 250, 0));
    QApplication::setPalette(palette);

    const auto icon = QtImages().templateImage("MenuIcon");
    ASSERT_TRUE(icon);
    const std::pair<QIcon::Mode, QColor> cases[] = {{QIcon::Normal, QColor(10, 200, 30)},
                                                    {QIcon::Disabled, QColor(90, 90, 90)},
                                                    {QIcon::Active, QColor(250, 250, 0)},
                                                    {QIcon::Selected, QColor(250, 250, 0)}};
    for (const auto& [mode, colour] : cases) {
        const QImage picture = icon->pixmap(QSize(22, 22), 1.0, mode).toImage();
        // A pixel within the left bar of the frame is painted fully.
        EXPECT_EQ(picture.pixelColor(2, 7), colour) << mode;
    }
    const QIcon red = tintedTemplate(*icon, [](QIcon::Mode) { return QColor(Qt::red); });
    EXPECT_EQ(red.pixmap(QSize(22, 22), 2.0).toImage().pixelColor(5, 14), QColor(Qt::red));
    QApplication::setPalette(before);
}

} // namespace
} // namespace glimmerly
