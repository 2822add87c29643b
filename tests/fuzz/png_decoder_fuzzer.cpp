#include "platform/png/PngDecoder.h"
#include "platform/png/PngEncoder.h"
#include "tests/fuzz/Require.h"

using namespace glimmerly;

/// Whatever decodes can be encoded and decodes to the same again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto decoder = PngDecoder::over({reinterpret_cast<const std::byte*>(data), size});
    constexpr std::int64_t largest = 1 << 20; // larger ones only take time
    if (!decoder || std::int64_t{decoder->size().width} * decoder->size().height > largest)
        return 0;
    const auto picture = decoder->decode();
    if (!picture)
        return 0;
    const auto encoded = encodePng(*picture, PngProfile::quick);
    require(encoded.has_value());
    const auto again = PngDecoder::over(encoded->span()).value().decode();
    require(again && *again == *picture);
    return 0;
}
