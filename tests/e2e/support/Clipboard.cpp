#include "tests/e2e/support/Clipboard.h"

#include "tests/support/desktop/WaitUntil.h"

#include <png.h>

#include <bit>
#include <fstream>
#include <stdexcept>

namespace glimmerly::e2e {

std::optional<Bitmap> Clipboard::picture() const {
    const auto bytes = desktop_.outputOf({"xclip", "-selection", "clipboard", "-t", "image/png", "-o"});
    return bytes ? decodePng(*bytes) : std::nullopt;
}

void Clipboard::setText(Desktop& desktop, const std::string& text) const {
    const auto file = desktop.home() / "clipboard.txt";
    std::ofstream(file) << text;
    desktop.start({"xclip", "-selection", "clipboard", "-quiet", "-i", file});
    if (!waitUntil([&] { return this->text() == text; }))
        throw std::runtime_error("the clipboard takes no text");
}

std::optional<std::string> Clipboard::text() const {
    return desktop_.outputOf({"xclip", "-selection", "clipboard", "-o"});
}

std::optional<Bitmap> decodePng(const std::string& bytes) {
    static_assert(std::endian::native == std::endian::little, "PNG_FORMAT_BGRA is 0xAARRGGBB");
    png_image reader{};
    reader.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&reader, bytes.data(), bytes.size()) == 0)
        return std::nullopt;
    reader.format = PNG_FORMAT_BGRA;
    Bitmap picture(PixelSize{static_cast<int>(reader.width), static_cast<int>(reader.height)});
    if (png_image_finish_read(&reader, nullptr, picture.row(0).data(),
                              static_cast<png_int_32>(picture.bytesPerRow()), nullptr) == 0)
        return std::nullopt;
    return picture;
}

} // namespace glimmerly::e2e
