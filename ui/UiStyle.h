#pragma once

/// The measures of windows, sheets and alerts. Lengths are points.
namespace glimmerly::ui_style {

// Text, for a desktop whose own text has the usual size; see `uiFont`.
inline constexpr double captionSize = 11;
inline constexpr double calloutSize = 12;
inline constexpr double bodySize = 13;
inline constexpr double title2Size = 17;
inline constexpr double largeTitleSize = 26;
inline constexpr double captionTracking = 0.6; ///< between the letters of captions above cards

inline constexpr double cardCornerRadius = 12;
inline constexpr double hairline = 1; ///< outlines and dividers
inline constexpr int captionToCardSpacing = 12;
inline constexpr int badgeDiameter = 26;
inline constexpr double badgeFillOpacity = 0.35; ///< of the quaternary fill

inline constexpr double buttonCornerRadius = 6;
inline constexpr int buttonPadding = 12; ///< left and right of the label
inline constexpr int buttonHeight = 28;  ///< more when the text needs it
inline constexpr double largeButtonCornerRadius = 7;
inline constexpr int largeButtonPadding = 15;
inline constexpr int largeButtonHeight = 34;
inline constexpr int buttonTextMargin = 4; ///< above and below the label, at least
inline constexpr int symbolSpacing = 7;    ///< between a symbol and the text beside it
inline constexpr int linkPadding = 2;      ///< above and below a link's text
inline constexpr int linkSidePadding = 5;  ///< left and right of it; let it stand out so far to the left
inline constexpr double linkCornerRadius = 5;

inline constexpr double fieldCornerRadius = 6;
inline constexpr int fieldHeight = 28; ///< of a single line; more when the text needs it
inline constexpr int fieldPadding = 8; ///< left and right of the text, beside Qt's own 2

inline constexpr int progressBarHeight = 6;
inline constexpr double focusRingWidth = 2;

inline constexpr int scrollBarWidth = 14;
inline constexpr int scrollHandleInset = 4;    ///< between the handle and the bar's sides
inline constexpr int scrollHandleEndInset = 6; ///< and its ends, which may lie in a rounded corner
inline constexpr int scrollHandleMinimum = 36;

inline constexpr int tooltipPadding = 4; ///< between its text and its edge, beside Qt's own point

} // namespace glimmerly::ui_style
