#include "ui/SymbolImage.h"

#include "ui/QtConversions.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

#include <cmath>

namespace glimmerly {

namespace {

/// The symbols are drawn for 13-point text of regular weight, on a grid of 16 units.
constexpr double drawnPointSize = 13;
constexpr double drawnSize = 16;
const QByteArray drawnStroke = "stroke-width=\"1.25\"";

const QString drawing = "drawing";

QByteArray strokeOf(SymbolWeight weight) {
    switch (weight) {
    case SymbolWeight::regular:
        break;
    case SymbolWeight::medium:
        return "stroke-width=\"1.5\"";
    case SymbolWeight::semibold:
        return "stroke-width=\"1.75\"";
    }
    return drawnStroke;
}

std::shared_ptr<QSvgRenderer> rendererOf(const QByteArray& svg) {
    auto renderer = std::make_shared<QSvgRenderer>(svg);
    return renderer->isValid() ? renderer : nullptr;
}

QImage transparent(QSize pixels) {
    QImage picture(pixels, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    return picture;
}

std::optional<QByteArray> contentOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

} // namespace

std::optional<SymbolImage> SymbolImage::symbol(std::string_view name, SymbolConfiguration configuration) {
    auto svg = contentOf(":/symbols/" + toQString(name) + ".svg");
    if (!svg)
        return std::nullopt;
    auto renderer = rendererOf(svg->replace(drawnStroke, strokeOf(configuration.weight)));
    if (!renderer)
        return std::nullopt;
    // Whole points keep the grid of the drawing on the grid of the pixels.
    const double side = std::round(drawnSize * configuration.pointSize / drawnPointSize);
    return SymbolImage(std::move(renderer), {side, side});
}

std::optional<SymbolImage> SymbolImage::file(const QString& path) {
    const auto svg = contentOf(path);
    auto renderer = svg ? rendererOf(*svg) : nullptr;
    if (!renderer)
        return std::nullopt;
    const QSizeF size = renderer->defaultSize();
    return SymbolImage(std::move(renderer), size);
}

QImage SymbolImage::rendered(QSize pixels, qreal pixelsPerPoint) const {
    const QSizeF own = size_ * pixelsPerPoint;
    const bool fits = own.width() <= pixels.width() && own.height() <= pixels.height();
    return fits ? renderedIn(pixels, own) : renderedToFit(pixels);
}

QImage SymbolImage::renderedToFit(QSize pixels) const {
    return renderedIn(pixels, size_.scaled(pixels, Qt::KeepAspectRatio));
}

QImage SymbolImage::renderedDrawing(QSize pixels, const QRectF& area) const {
    QImage picture = transparent(pixels);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QRectF place(QPointF(),
                 renderer_->boundsOnElement(drawing).size().scaled(area.size(), Qt::KeepAspectRatio));
    place.moveCenter(area.center());
    renderer_->render(&painter, drawing, place);
    return picture;
}

QImage SymbolImage::renderedIn(QSize pixels, QSizeF area) const {
    QImage picture = transparent(pixels);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF corner(std::floor((pixels.width() - area.width()) / 2),
                         std::floor((pixels.height() - area.height()) / 2));
    renderer_->render(&painter, QRectF(corner, area));
    return picture;
}

QImage tinted(QImage picture, const QColor& color) {
    if (picture.isNull())
        return picture;
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(QRectF(QPointF(), picture.deviceIndependentSize()), color);
    return picture;
}

} // namespace glimmerly
