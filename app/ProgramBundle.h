#pragma once

#include "platform/Application.h"

namespace glimmerly {

/// What this build of the program is called; fixed when the build is configured.
[[nodiscard]] BundleInfo programBundle();

} // namespace glimmerly
