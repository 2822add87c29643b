#include "ui/UiColors.h"

#include "tests/support/FakeAppearance.h"
#include "ui/FollowAppearance.h"
#include "ui/UiText.h"

#include <QApplication>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace glimmerly {
namespace {

/// Relative luminance of an opaque colour, as WCAG 2 defines it.
double luminance(const QColor& color) {
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

TEST(UiColorsTest, EveryTextCanBeReadInBothSchemes) {
    for (const auto scheme : {ColorScheme::light, ColorScheme::dark}) {
        SCOPED_TRACE(scheme == ColorScheme::dark ? "dark" : "light");
        const UiColors& colors = uiColors(scheme);
        for (const auto& background : {colors.windowBackground, colors.controlBackground}) {
            for (const auto& text :
                 {colors.primary, colors.secondary, colors.placeholder, colors.link, colors.error})
                EXPECT_GE(contrast(text, background), 4.5) << text.name().toStdString();
            EXPECT_GE(contrast(colors.focusRing, background), 3) << "the ring";
            EXPECT_GE(contrast(colors.accent, background), 3) << "a button";
            EXPECT_GE(contrast(colors.warning, background), 3) << "a symbol";
        }
        for (const auto& text : {colors.primary, colors.link})
            EXPECT_GE(contrast(text, colors.sidebarBackground), 4.5) << text.name().toStdString();
        for (const auto& fill : {colors.accent, colors.success})
            EXPECT_GE(contrast(colors.onAccent, fill), 4.5) << fill.name().toStdString();
        EXPECT_GE(contrast(colors.primary, colors.control), 4.5);
    }
}

TEST(UiColorsTest, AnOpenWindowFollowsTheDesktop) {
    FakeAppearance desktop;
    const auto colorsOfTheDesktop = followAppearance(desktop);
    QWidget window;
    QVBoxLayout layout(&window);
    auto* label = new UiLabel("text", text_style::bodySecondary, &window);
    layout.addWidget(label);
    window.show();
    for (const auto scheme : {ColorScheme::light, ColorScheme::dark, ColorScheme::light}) {
        desktop.change(scheme);
        const UiColors& colors = uiColors(scheme);
        QCoreApplication::processEvents();
        EXPECT_EQ(&uiColors(*label), &colors);
        EXPECT_EQ(label->palette().color(label->foregroundRole()), colors.secondary);
        EXPECT_EQ(window.grab().toImage().pixelColor(1, 1), colors.windowBackground);
    }
    QApplication::setPalette(QPalette());
}

} // namespace
} // namespace glimmerly
