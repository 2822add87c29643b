#pragma once

#include "platform/Images.h"

namespace glimmerly {

/// The pictures compiled into the program.
class QtImages : public Images {
public:
    [[nodiscard]] std::optional<QIcon> templateImage(std::string_view name) const override;
    [[nodiscard]] std::optional<QIcon> templateSymbol(std::string_view name,
                                                      SymbolConfiguration configuration) const override;
    [[nodiscard]] std::optional<QIcon> applicationIcon() const override;
};

} // namespace glimmerly
