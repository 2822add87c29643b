#pragma once

#include <optional>
#include <string_view>

namespace glimmerly {

/// What a drag inside the selection draws.
enum class SelectionTool { rectangle, arrow, text };

/// "rectangle", "arrow" or "text".
[[nodiscard]] constexpr std::string_view rawValue(SelectionTool tool) {
    switch (tool) {
    case SelectionTool::rectangle:
        return "rectangle";
    case SelectionTool::arrow:
        return "arrow";
    case SelectionTool::text:
        return "text";
    }
    return {};
}

/// The tool with that raw value, if there is one.
[[nodiscard]] constexpr std::optional<SelectionTool> selectionTool(std::string_view raw) {
    for (const auto tool : {SelectionTool::rectangle, SelectionTool::arrow, SelectionTool::text}) {
        if (raw == rawValue(tool))
            return tool;
    }
    return std::nullopt;
}

} // namespace glimmerly
