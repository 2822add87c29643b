#include "platform/memory/DisplayBitmap.h"

#include "platform/memory/ByteBuffer.h"

namespace glimmerly {

Bitmap makeDisplayBitmap(PixelSize size) {
    constexpr int free = displayBitmapFreeRows;
    const auto width = static_cast<std::size_t>(size.width);
    const PixelSize whole{size.width, size.height + 2 * free};
    auto memory =
        std::make_shared<ByteBuffer>(width * static_cast<std::size_t>(whole.height) * sizeof(Bitmap::Pixel));
    auto* pixels = reinterpret_cast<Bitmap::Pixel*>(memory->data());
    return Bitmap(whole, width, pixels, std::move(memory)).leavingRowsFree(free, free);
}

} // namespace glimmerly
