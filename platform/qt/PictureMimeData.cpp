#include "platform/qt/PictureMimeData.h"

#include "platform/png/PngEncoder.h"

#include <QImage>
#include <QImageWriter>
#include <QThreadPool>

namespace glimmerly {

namespace {

constexpr auto pngType = "image/png";
/// Qt's name for a QImage as it is. Not offered by name: Qt would add every format it can write, and a
/// clipboard manager that saves them all would be busy for seconds.
constexpr auto imageType = "application/x-qt-image";

QByteArray encodedOrEmpty(const Bitmap& picture) {
    const auto png = encodePng(picture, PngProfile::quick);
    if (!png)
        return {};
    return {reinterpret_cast<const char*>(png->data()), static_cast<qsizetype>(png->size())};
}

std::shared_future<QByteArray> encodeInBackground(const Bitmap& picture) {
    auto promise = std::make_shared<std::promise<QByteArray>>();
    QThreadPool::globalInstance()->start([picture, promise] { promise->set_value(encodedOrEmpty(picture)); });
    return promise->get_future().share();
}

} // namespace

PictureMimeData::PictureMimeData(const Bitmap& picture, double pixelsPerPoint)
    : png_(encodeInBackground(picture)), pixelsPerPoint_(pixelsPerPoint) {}

QStringList PictureMimeData::formats() const {
    QStringList offered{pngType};
    for (const char* other : {"image/bmp", "image/tiff", "image/jpeg"}) {
        if (QImageWriter::supportedMimeTypes().contains(other))
            offered.append(other);
    }
    return offered;
}

bool PictureMimeData::hasFormat(const QString& mimeType) const {
    return mimeType == imageType || formats().contains(mimeType);
}

QVariant PictureMimeData::retrieveData(const QString& mimeType, QMetaType) const {
    if (mimeType == pngType)
        return png_.get();
    if (mimeType != imageType)
        return {}; // Qt writes it from the image
    QImage image = QImage::fromData(png_.get(), "PNG");
    image.setDevicePixelRatio(pixelsPerPoint_);
    return image;
}

} // namespace glimmerly
