#include "ui/QtConversions.h"

namespace glimmerly {

QImage toQImage(const Bitmap& bitmap, Opacity opacity) {
    const auto format =
        opacity == Opacity::opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied;
    auto* keepAlive = new Bitmap(bitmap);
    const auto* pixels = reinterpret_cast<const uchar*>(bitmap.row(0).data());
    return QImage(
        pixels, bitmap.width(), bitmap.height(), static_cast<qsizetype>(bitmap.bytesPerRow()), format,
        [](void* owner) { delete static_cast<Bitmap*>(owner); }, keepAlive);
}

} // namespace glimmerly
