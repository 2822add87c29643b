#pragma once

#include "base/Observers.h"

namespace glimmerly {

enum class ColorScheme { light, dark };

/// How the desktop wants programs to look. Main thread only.
class Appearance {
public:
    virtual ~Appearance() = default;

    [[nodiscard]] virtual ColorScheme colorScheme() const = 0;
    /// `observer` runs on the main thread after each change.
    [[nodiscard]] virtual Observation observe(std::function<void()> observer) = 0;
};

} // namespace glimmerly
