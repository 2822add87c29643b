#include "capture/service/CapturedPicture.h"

#include <utility>

namespace glimmerly {

namespace {
const CapturedPicture* atHand = nullptr;
} // namespace

CapturedPicture::CapturedPicture(std::filesystem::path fileURL, Bitmap bitmap)
    : fileURL_(std::move(fileURL)), bitmap_(std::move(bitmap)) {
    atHand = this;
}

CapturedPicture::~CapturedPicture() {
    atHand = nullptr;
}

Bitmap CapturedPicture::of(const std::filesystem::path& fileURL) {
    return atHand != nullptr && atHand->fileURL_ == fileURL ? atHand->bitmap_ : Bitmap();
}

} // namespace glimmerly
