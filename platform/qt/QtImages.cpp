#include "platform/qt/QtImages.h"

#include "base/BundleIdentifier.h"
#include "platform/qt/PictureIconEngine.h"
#include "ui/QtConversions.h"

namespace glimmerly {

namespace {

PictureIconEngine::Draw atOwnSize(const SymbolImage& image) {
    return [image](QSize pixels, qreal pixelsPerPoint) { return image.rendered(pixels, pixelsPerPoint); };
}

PictureIconEngine::Draw asLargeAsFits(const SymbolImage& image) {
    return [image](QSize pixels, qreal) { return image.renderedToFit(pixels); };
}

QIcon icon(PictureIconEngine::Draw draw, PictureIconEngine::Tint tint) {
    return QIcon(new PictureIconEngine(std::move(draw), std::move(tint)));
}

} // namespace

std::optional<QIcon> QtImages::templateImage(std::string_view name) const {
    return SymbolImage::file(":/images/" + toQString(name) + ".svg").transform([](const SymbolImage& image) {
        return icon(asLargeAsFits(image), paletteTextColor);
    });
}

std::optional<QIcon> QtImages::templateSymbol(std::string_view name,
                                              SymbolConfiguration configuration) const {
    return SymbolImage::symbol(name, configuration).transform([](const SymbolImage& image) {
        return icon(atOwnSize(image), paletteTextColor);
    });
}

std::optional<QIcon> QtImages::applicationIcon() const {
    return SymbolImage::file(":/" + toQString(bundleIdentifier) + ".svg")
        .transform([](const SymbolImage& image) {
            return icon(asLargeAsFits(image), [](QIcon::Mode) { return QColor(); });
        });
}

} // namespace glimmerly
