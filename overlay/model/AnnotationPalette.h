#pragma once

#include "overlay/model/Color.h"

#include <array>
#include <string_view>

namespace glimmerly {

/// One colour that annotations can have.
struct AnnotationColorOption {
    std::string_view id;   ///< stable, lower case
    std::string_view name; ///< what the user reads
    Color color;

    constexpr bool operator==(const AnnotationColorOption& other) const { return id == other.id; }
};

/// In display order; the first is the default colour.
inline constexpr std::array annotationPalette = {
    AnnotationColorOption{"red", "Red", {0.94, 0.22, 0.20}},
    AnnotationColorOption{"green", "Green", {0.18, 0.70, 0.34}},
    AnnotationColorOption{"blue", "Blue", {0.11, 0.46, 0.95}},
    AnnotationColorOption{"yellow", "Yellow", {1.00, 0.78, 0.10}},
    AnnotationColorOption{"white", "White", Color::white(1)},
    AnnotationColorOption{"black", "Black", Color::white(0)},
};

} // namespace glimmerly
