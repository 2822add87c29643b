#pragma once

#include "platform/Images.h"

#include <QColor>
#include <QImage>
#include <QSizeF>

#include <memory>
#include <optional>
#include <string_view>

class QSvgRenderer;

namespace glimmerly {

/// A picture that is drawn afresh for each size, so that it is crisp at every scale. Copies share it.
class SymbolImage {
public:
    /// The symbol `name`, as large and heavy as text of that configuration; none when there is no such
    /// symbol.
    [[nodiscard]] static std::optional<SymbolImage> symbol(std::string_view name,
                                                           SymbolConfiguration configuration);
    /// The SVG file at `path`, in the size it names; none when there is no such file.
    [[nodiscard]] static std::optional<SymbolImage> file(const QString& path);

    /// In points.
    [[nodiscard]] QSizeF size() const { return size_; }
    /// The picture in its own colours, centred in `pixels` pixels of which `pixelsPerPoint` make a point, at
    /// its own size, or smaller when that does not fit.
    [[nodiscard]] QImage rendered(QSize pixels, qreal pixelsPerPoint) const;
    /// The same as large as fits.
    [[nodiscard]] QImage renderedToFit(QSize pixels) const;
    /// A picture of `pixels` with what is drawn in this one, without the margins around it, as large as fits
    /// in the middle of `area`, in pixels. For SVG whose drawing is the element "drawing".
    [[nodiscard]] QImage renderedDrawing(QSize pixels, const QRectF& area) const;

private:
    SymbolImage(std::shared_ptr<QSvgRenderer> renderer, QSizeF size)
        : renderer_(std::move(renderer)), size_(size) {}
    [[nodiscard]] QImage renderedIn(QSize pixels, QSizeF area) const;

    std::shared_ptr<QSvgRenderer> renderer_;
    QSizeF size_;
};

/// `picture` with every pixel in `color`, its alpha kept.
[[nodiscard]] QImage tinted(QImage picture, const QColor& color);

} // namespace glimmerly
