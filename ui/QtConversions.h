#pragma once

#include "base/Bitmap.h"

#include <QImage>
#include <QString>

#include <string_view>

namespace glimmerly {

/// An opaque picture over the same pixels as `bitmap`, which it keeps alive.
[[nodiscard]] QImage toQImage(const Bitmap& bitmap);

[[nodiscard]] inline QString toQString(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

} // namespace glimmerly
