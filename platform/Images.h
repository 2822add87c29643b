#pragma once

#include <optional>
#include <string_view>

class QIcon;

namespace glimmerly {

enum class SymbolWeight { regular, medium, semibold };

struct SymbolConfiguration {
    double pointSize = 13;
    SymbolWeight weight = SymbolWeight::regular;
};

/// The pictures that ship with the program. Template pictures count by their alpha alone: they take the
/// colour of the text beside them.
class Images {
public:
    virtual ~Images() = default;

    /// The picture named `name` as a template; none when there is no such picture.
    [[nodiscard]] virtual std::optional<QIcon> templateImage(std::string_view name) const = 0;
    /// The symbol named `name`, as large and heavy as text of that configuration, as a template; none when
    /// there is no such symbol.
    [[nodiscard]] virtual std::optional<QIcon> templateSymbol(std::string_view name,
                                                              SymbolConfiguration configuration) const = 0;
    /// The program's own icon in its colours.
    [[nodiscard]] virtual std::optional<QIcon> applicationIcon() const = 0;
};

} // namespace glimmerly
