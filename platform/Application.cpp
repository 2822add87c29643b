#include "platform/Application.h"

namespace glimmerly {

std::string BundleInfo::applicationName() const {
    return name.value_or("Glimmerly");
}

std::string BundleInfo::versionText() const {
    for (const auto* candidate : {&shortVersion, &version}) {
        if (*candidate && !(*candidate)->empty())
            return "Version " + **candidate;
    }
    return "Version unknown";
}

} // namespace glimmerly
