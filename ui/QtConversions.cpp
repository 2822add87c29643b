#include "ui/QtConversions.h"

namespace glimmerly {

QImage toQImage(const Bitmap& bitmap) {
    auto* keepAlive = new Bitmap(bitmap);
    const auto* pixels = reinterpret_cast<const uchar*>(bitmap.row(0).data());
    return QImage(
        pixels, bitmap.width(), bitmap.height(), static_cast<qsizetype>(bitmap.bytesPerRow()),
        QImage::Format_RGB32, [](void* owner) { delete static_cast<Bitmap*>(owner); }, keepAlive);
}

} // namespace glimmerly
