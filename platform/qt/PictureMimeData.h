#pragma once

#include "base/Bitmap.h"

#include <QMimeData>

#include <future>

namespace glimmerly {

/// A picture on the pasteboard. It is encoded as PNG once, on a thread of its own from the start; a reader
/// waits for that. Every other format is made from the PNG for the reader that asks, so that the pixels,
/// perhaps part of a much larger capture, are let go as soon as they are encoded.
class PictureMimeData : public QMimeData {
public:
    /// `pixelsPerPoint` is what a reader within this program sees as the picture's device pixel ratio.
    PictureMimeData(const Bitmap& picture, double pixelsPerPoint);

    [[nodiscard]] QStringList formats() const override;
    [[nodiscard]] bool hasFormat(const QString& mimeType) const override;

protected:
    [[nodiscard]] QVariant retrieveData(const QString& mimeType, QMetaType type) const override;

private:
    std::shared_future<QByteArray> png_; ///< empty when it could not be encoded
    double pixelsPerPoint_;
};

} // namespace glimmerly
