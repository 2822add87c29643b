#pragma once

/// The measures of the hotkey recorder. Lengths are points.
namespace glimmerly::hotkey_recorder_style {

inline constexpr int rowSpacing = 12;
inline constexpr int minimumSpacer = 16; ///< between the label and the control, beside the row's spacing

inline constexpr int controlWidth = 132;
inline constexpr int controlHeight = 24;
inline constexpr int segmentSpacing = 1;
inline constexpr double cornerRadius = 6;
inline constexpr int textPadding = 6; ///< left and right of the text, at least
inline constexpr int smallestText = 9;

inline constexpr double pressedFillOpacity = 0.5; ///< of the tertiary fill
inline constexpr double idleFillOpacity = 0.75;   ///< of the quaternary fill

inline constexpr double escapeInset = 6;
inline constexpr double recordInset = 5.5;
inline constexpr double clearInset = 7.5;

} // namespace glimmerly::hotkey_recorder_style
