#pragma once

#include "base/Bitmap.h"
#include "base/Result.h"
#include "platform/files/FileDescriptor.h"
#include "platform/png/PngSource.h"

namespace glimmerly {

/// An opaque picture as an ordinary PNG file whose pixels are not compressed, as quick to write and to read
/// as memory: for a file that lives for seconds and is read on the same machine. Alpha is not looked at.
class StoredPng {
public:
    /// Fails for an empty picture and for one wider than 21844 pixels or of more than 2^28 in all.
    [[nodiscard]] static Result<StoredPng> of(const Bitmap& bitmap);

    /// Writes the picture into the empty file, from two threads. Fails with the system's error.
    [[nodiscard]] Result<void> writeTo(const FileDescriptor& file) const;

private:
    explicit StoredPng(Bitmap bitmap) : bitmap_(std::move(bitmap)) {}

    Bitmap bitmap_;
};

enum class StoredPngReading { done, notOfThisForm };

/// Reads a file that `StoredPng` wrote of a picture of `destination`'s size, and checks its checksums. A file
/// of any other form is left to others; `destination` is then unspecified.
[[nodiscard]] StoredPngReading readStoredPng(const PngSource& source, Bitmap destination);

} // namespace glimmerly
