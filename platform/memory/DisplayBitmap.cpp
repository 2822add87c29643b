#include "platform/memory/DisplayBitmap.h"

#include "platform/memory/ByteBuffer.h"

namespace glimmerly {

Bitmap makeDisplayBitmap(PixelSize size) {
    const auto width = static_cast<std::size_t>(size.width);
    auto memory =
        std::make_shared<ByteBuffer>(width * static_cast<std::size_t>(size.height) * sizeof(Bitmap::Pixel));
    auto* pixels = reinterpret_cast<Bitmap::Pixel*>(memory->data());
    return {size, width, pixels, std::move(memory)};
}

} // namespace glimmerly
