#pragma once

#include "capture/ScreenshotRequestSource.h"

namespace glimmerly {

/// Asks the process's capture workflow for a screenshot; returns at once. Main thread only.
void requestScreenshot(ScreenshotRequestSource source);

} // namespace glimmerly
