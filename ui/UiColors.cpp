#include "ui/UiColors.h"

#include <QWidget>

namespace glimmerly {

namespace {

QColor withOpacity(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

const QColor ink(0x1c, 0x1c, 0x1f);
const QColor paper(0xf4, 0xf4, 0xf6);

// Every text colour stands out from both backgrounds of its scheme by 4.5 to 1 or more, and so does
// `onAccent` from `accent` and `success`.
const UiColors lightColors{.windowBackground = {0xf2, 0xf2, 0xf4},
                           .sidebarBackground = {0xe6, 0xe6, 0xea},
                           .controlBackground = {0xff, 0xff, 0xff},
                           .primary = ink,
                           .secondary = {0x5c, 0x5d, 0x65},
                           .placeholder = {0x69, 0x6a, 0x73},
                           .tertiaryFill = withOpacity(ink, 0.34),
                           .quaternaryFill = withOpacity(ink, 0.13),
                           .separator = withOpacity(ink, 0.08),
                           .editorOutline = withOpacity(ink, 0.12),
                           .controlOutline = withOpacity(ink, 0.18),
                           .control = {0xff, 0xff, 0xff},
                           .accent = {0x1b, 0x66, 0xe0},
                           .onAccent = {0xff, 0xff, 0xff},
                           .link = {0x17, 0x5c, 0xcc},
                           .success = {0x1f, 0x80, 0x3f},
                           .warning = {0xb0, 0x6a, 0x00},
                           .error = {0xc0, 0x21, 0x1b},
                           .focusRing = {0x1b, 0x66, 0xe0},
                           .strongFill = withOpacity(ink, 0.5),
                           .behindSheet = withOpacity(ink, 0.35)};

const UiColors darkColors{.windowBackground = {0x23, 0x23, 0x26},
                          .sidebarBackground = {0x1b, 0x1b, 0x1e},
                          .controlBackground = {0x2d, 0x2d, 0x31},
                          .primary = paper,
                          .secondary = {0xae, 0xae, 0xb6},
                          .placeholder = {0x9b, 0x9b, 0xa4},
                          .tertiaryFill = withOpacity(paper, 0.40),
                          .quaternaryFill = withOpacity(paper, 0.17),
                          .separator = withOpacity(paper, 0.08),
                          .editorOutline = withOpacity(paper, 0.12),
                          .controlOutline = withOpacity(paper, 0.16),
                          .control = {0x45, 0x45, 0x4b},
                          .accent = {0x2e, 0x72, 0xe4},
                          .onAccent = {0xff, 0xff, 0xff},
                          .link = {0x7a, 0xb3, 0xff},
                          .success = {0x24, 0x82, 0x45},
                          .warning = {0xff, 0xb8, 0x4d},
                          .error = {0xff, 0x87, 0x7e},
                          .focusRing = {0x6f, 0xab, 0xff},
                          .strongFill = withOpacity(paper, 0.5),
                          .behindSheet = withOpacity(Qt::black, 0.55)};

constexpr double disabledOpacity = 0.4;

} // namespace

const UiColors& uiColors(ColorScheme scheme) {
    return scheme == ColorScheme::dark ? darkColors : lightColors;
}

const UiColors& uiColors(const QWidget& widget) {
    const bool isDark = widget.palette().color(QPalette::Window).lightnessF() < 0.5F;
    return uiColors(isDark ? ColorScheme::dark : ColorScheme::light);
}

bool looksEnabled(const QWidget& widget) {
    return !widget.testAttribute(Qt::WA_ForceDisabled); // set by the widget's own setEnabled alone
}

QPalette uiPalette(ColorScheme scheme) {
    const UiColors& colors = uiColors(scheme);
    QPalette palette(colors.control, colors.windowBackground);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, colors.primary);
        palette.setColor(QPalette::Disabled, role, withOpacity(colors.primary, disabledOpacity));
    }
    palette.setColor(QPalette::Base, colors.controlBackground);
    palette.setColor(QPalette::AlternateBase, colors.windowBackground);
    palette.setColor(QPalette::PlaceholderText, colors.placeholder);
    palette.setColor(QPalette::Highlight, colors.accent);
    palette.setColor(QPalette::HighlightedText, colors.onAccent);
    palette.setColor(QPalette::Link, colors.link);
    palette.setColor(QPalette::LinkVisited, colors.link);
    palette.setColor(QPalette::ToolTipBase, colors.controlBackground);
    palette.setColor(QPalette::ToolTipText, colors.primary);
    return palette;
}

} // namespace glimmerly
