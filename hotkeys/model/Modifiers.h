#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace glimmerly {

/// A set of modifier keys.
class Modifiers {
public:
    static const Modifiers control;
    static const Modifiers option;
    static const Modifiers shift;
    static const Modifiers command;

    constexpr Modifiers() = default;
    /// `rawValue` has one bit per key; other bits have no meaning and are kept.
    constexpr explicit Modifiers(std::int64_t rawValue) : rawValue_(rawValue) {}

    /// From a key event's device-independent flags; flags of other keys are ignored.
    [[nodiscard]] static Modifiers fromEventModifierFlags(std::uint64_t flags);
    /// From the hotkey service's flags; flags of other keys are ignored.
    [[nodiscard]] static Modifiers fromCarbonFlags(std::uint32_t flags);

    [[nodiscard]] constexpr std::int64_t rawValue() const { return rawValue_; }
    [[nodiscard]] constexpr bool contains(Modifiers other) const {
        return (rawValue_ & other.rawValue_) == other.rawValue_;
    }
    [[nodiscard]] std::uint64_t eventModifierFlags() const;
    [[nodiscard]] std::uint32_t carbonFlags() const;
    /// The keys' glyphs in the order control, option, shift, command, as UTF-8.
    [[nodiscard]] std::string glyphString() const;

    constexpr bool operator==(const Modifiers&) const = default;
    friend constexpr Modifiers operator|(Modifiers a, Modifiers b) {
        return Modifiers(a.rawValue_ | b.rawValue_);
    }

private:
    std::int64_t rawValue_ = 0;
};

inline constexpr Modifiers Modifiers::control{1};
inline constexpr Modifiers Modifiers::option{2};
inline constexpr Modifiers Modifiers::shift{4};
inline constexpr Modifiers Modifiers::command{8};

} // namespace glimmerly

template <>
struct std::hash<glimmerly::Modifiers> {
    std::size_t operator()(glimmerly::Modifiers modifiers) const noexcept {
        return std::hash<std::int64_t>()(modifiers.rawValue());
    }
};
