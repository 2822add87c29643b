#pragma once

#include "platform/Appearance.h"

#include <QColor>
#include <QPalette>

class QWidget;

namespace glimmerly {

/// The colours of windows, sheets and alerts in one colour scheme.
struct UiColors {
    QColor windowBackground;
    QColor sidebarBackground;
    QColor controlBackground; ///< cards, text fields
    QColor primary;           ///< text
    QColor secondary;         ///< text that explains
    QColor placeholder;       ///< text that stands where some is to be typed
    QColor tertiaryFill;      ///< translucent, over any background
    QColor quaternaryFill;    ///< fainter
    QColor separator;         ///< dividers, and outlines of cards: the primary colour at 8 %
    QColor editorOutline;     ///< of areas for several lines: the primary colour at 12 %
    QColor controlOutline;    ///< text fields and buttons that are not prominent
    QColor control;           ///< buttons that are not prominent
    QColor accent;            ///< prominent buttons, selections
    QColor onAccent;          ///< text on `accent` and `success`
    QColor link;              ///< the accent as text on a background of the window
    QColor success;           ///< "it is granted"
    QColor warning;           ///< symbols of warnings
    QColor error;             ///< text that tells of a failure
    QColor focusRing;
    QColor strongFill;  ///< translucent, yet seen on any background: switches that are off, handles of scroll
                        ///< bars
    QColor behindSheet; ///< over a window that waits for its sheet
};

[[nodiscard]] const UiColors& uiColors(ColorScheme scheme);
/// The colours for the scheme that `widget` shows. Ask when painting: a change of scheme reaches every
/// widget as QEvent::PaletteChange and repaints it.
[[nodiscard]] const UiColors& uiColors(const QWidget& widget);

/// Whether to paint `widget` as one that can be used. What only its window's sheet has disabled looks as
/// before.
[[nodiscard]] bool looksEnabled(const QWidget& widget);

/// The same colours for Qt's own widgets: what QApplication::setPalette is to be given.
[[nodiscard]] QPalette uiPalette(ColorScheme scheme);

} // namespace glimmerly
