#pragma once

#include "ui/UiText.h"

class QLayout;

namespace glimmerly {

/// A row with `label` on the left and `value` at the right edge, on one baseline.
[[nodiscard]] QLayout* makeValueRow(const QString& label, const TextStyle& labelStyle, UiLabel& value);

} // namespace glimmerly
