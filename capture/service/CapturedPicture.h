#pragma once

#include "base/Bitmap.h"

#include <filesystem>

namespace glimmerly {

/// Offers the pixels of a capture file that has just been written to whoever opens it, for as long as this
/// object lives: reading a whole display back takes longer than all else between the key press and the
/// overlay. Main thread only, one at a time.
class CapturedPicture {
public:
    CapturedPicture(std::filesystem::path fileURL, Bitmap bitmap);
    ~CapturedPicture();
    CapturedPicture(const CapturedPicture&) = delete;
    CapturedPicture& operator=(const CapturedPicture&) = delete;

    /// The pixels of that file; null when they are not at hand.
    [[nodiscard]] static Bitmap of(const std::filesystem::path& fileURL);

private:
    std::filesystem::path fileURL_;
    Bitmap bitmap_;
};

} // namespace glimmerly
