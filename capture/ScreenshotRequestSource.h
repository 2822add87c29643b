#pragma once

namespace glimmerly {

/// Where a screenshot request came from.
enum class ScreenshotRequestSource {
    menubar, ///< the status menu
    hotkey,
};

} // namespace glimmerly
