#pragma once

#include <string>

namespace glimmerly {

/// Opens the page of the running desktop's settings that is nearest to what the program `bundleIdentifier` is
/// allowed to do. A desktop that is not known, or whose settings are not installed, opens nothing.
void openPrivacySettings(const std::string& bundleIdentifier);

} // namespace glimmerly
