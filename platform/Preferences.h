#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace glimmerly {

/// The user's preferences, kept across launches. Main thread only.
class Preferences {
public:
    virtual ~Preferences() = default;

    /// The bytes stored under `key`; none when there is no such entry.
    [[nodiscard]] virtual std::optional<std::string> data(std::string_view key) const = 0;
    /// Stored at once; what cannot be written is kept for this run and not reported.
    virtual void setData(std::string_view key, std::string_view bytes) = 0;
    /// The same for a truth.
    virtual void setBool(std::string_view key, bool value) = 0;
    virtual void remove(std::string_view key) = 0;
};

} // namespace glimmerly
