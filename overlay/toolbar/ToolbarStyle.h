#pragma once

#include "overlay/model/Color.h"

#include <chrono>

/// The looks of the toolbar. Lengths are points.
namespace glimmerly::toolbar_style {

inline constexpr Color barColor = Color::white(1);
inline constexpr double barCornerRadius = 10;
inline constexpr double barBorderWidth = 1;
inline constexpr Color barBorderColor = Color::white(0, 0.08);
inline constexpr int barPadding = 8;
inline constexpr int groupSpacing = 6;
inline constexpr int buttonSpacing = 4;

inline constexpr double shadowOpacity = 0.15;
inline constexpr double shadowRadius = 12; ///< the standard deviation of its blur
inline constexpr double shadowDrop = 3;    ///< downwards

inline constexpr int separatorWidth = 1;
inline constexpr int separatorHeight = 20;
inline constexpr Color separatorColor = Color::white(0, 0.12);

inline constexpr int grabHandleWidth = 18;
inline constexpr int grabHandleHeight = 24;
inline constexpr double grabDotDiameter = 2.5;
inline constexpr double grabDotPitch = 6.5;
inline constexpr int grabDotCount = 3;
inline constexpr Color grabDotColor = Color::white(0.45);

inline constexpr int buttonSize = 28;
inline constexpr double buttonCornerRadius = 7;
inline constexpr double buttonBackgroundLevel = 0.2; ///< grey; the state decides its opacity
inline constexpr Color symbolTint = Color::white(0.14);
inline constexpr Color whiteSwatchTint = Color::white(0.4);

inline constexpr std::chrono::milliseconds lookChangeDuration{120};

} // namespace glimmerly::toolbar_style
