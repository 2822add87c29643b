#pragma once

#include "overlay/model/Color.h"

#include <QColor>

namespace glimmerly {

[[nodiscard]] inline QColor toQColor(const Color& color) {
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue), static_cast<float>(color.alpha));
}

} // namespace glimmerly
