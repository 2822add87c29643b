#include "platform/png/BandCompressor.h"

#include <isa-l/igzip_lib.h>
#include <zlib.h>

#include <array>

namespace glimmerly {

namespace {

class QuickCompressor : public BandCompressor {
public:
    std::optional<std::size_t> compress(std::span<const std::uint8_t> band, std::span<std::uint8_t> out,
                                        SearchDepth) override {
        isal_deflate_init(&stream_);
        stream_.level = 1;
        stream_.level_buf = workspace_.data();
        stream_.level_buf_size = static_cast<std::uint32_t>(workspace_.size());
        stream_.flush = SYNC_FLUSH;
        stream_.next_in = const_cast<std::uint8_t*>(band.data());
        stream_.avail_in = static_cast<std::uint32_t>(band.size());
        stream_.next_out = out.data();
        stream_.avail_out = static_cast<std::uint32_t>(out.size());
        if (isal_deflate(&stream_) != COMP_OK || stream_.avail_in > 0 || stream_.avail_out == 0)
            return std::nullopt;
        return stream_.total_out;
    }

private:
    isal_zstream stream_{};
    std::array<std::uint8_t, ISAL_DEF_LVL1_DEFAULT> workspace_{};
};

class CompactCompressor : public BandCompressor {
public:
    CompactCompressor() {
        constexpr int lazyLevel = 4;
        constexpr int bareDeflateWindow = -MAX_WBITS;
        constexpr int mostMemory = 9;
        ready_ =
            deflateInit2(&stream_, lazyLevel, Z_DEFLATED, bareDeflateWindow, mostMemory, Z_FILTERED) == Z_OK;
    }
    ~CompactCompressor() override { deflateEnd(&stream_); }
    CompactCompressor(const CompactCompressor&) = delete;
    CompactCompressor& operator=(const CompactCompressor&) = delete;

    std::optional<std::size_t> compress(std::span<const std::uint8_t> band, std::span<std::uint8_t> out,
                                        SearchDepth depth) override {
        if (!ready_ || deflateReset(&stream_) != Z_OK)
            return std::nullopt;
        // In text and in grain a long search finds little, and far matches cost more than near ones.
        if (depth == SearchDepth::shallow)
            deflateTune(&stream_, 4, 6, 12, 2);
        else
            deflateTune(&stream_, 8, 16, 128, 32);
        stream_.next_in = const_cast<Bytef*>(band.data());
        stream_.avail_in = static_cast<uInt>(band.size());
        stream_.next_out = out.data();
        stream_.avail_out = static_cast<uInt>(out.size());
        if (deflate(&stream_, Z_SYNC_FLUSH) != Z_OK || stream_.avail_in > 0 || stream_.avail_out == 0)
            return std::nullopt;
        return stream_.total_out;
    }

private:
    z_stream stream_{};
    bool ready_ = false;
};

} // namespace

std::unique_ptr<BandCompressor> makeQuickCompressor() {
    return std::make_unique<QuickCompressor>();
}

std::unique_ptr<BandCompressor> makeCompactCompressor() {
    return std::make_unique<CompactCompressor>();
}

} // namespace glimmerly
