#pragma once

#include <functional>

namespace glimmerly {

enum class ColorScheme { light, dark };

/// How the desktop wants programs to look. Main thread only.
class Appearance {
public:
    virtual ~Appearance() = default;

    [[nodiscard]] virtual ColorScheme colorScheme() const = 0;
    /// `handler` runs on the main thread after each change, for the life of the process.
    virtual void onChange(std::function<void()> handler) = 0;
};

} // namespace glimmerly
