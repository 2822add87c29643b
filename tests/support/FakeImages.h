#pragma once

#include "platform/Images.h"

#include <QIcon>
#include <QPixmap>

#include <map>
#include <string>

namespace glimmerly {

/// Offers the pictures named in it, each a square of its own size in pixels so that a test can tell them
/// apart.
class FakeImages : public Images {
public:
    [[nodiscard]] std::optional<QIcon> templateImage(std::string_view name) const override {
        return square(images, name);
    }
    [[nodiscard]] std::optional<QIcon> templateSymbol(std::string_view name,
                                                      SymbolConfiguration configuration) const override {
        requests[std::string(name)] = configuration;
        return square(symbols, name);
    }
    [[nodiscard]] std::optional<QIcon> applicationIcon() const override { return square(icons, "icon"); }

    std::map<std::string, int> images;
    std::map<std::string, int> symbols;
    std::map<std::string, int> icons; ///< the one key is "icon"
    mutable std::map<std::string, SymbolConfiguration> requests;

private:
    static std::optional<QIcon> square(const std::map<std::string, int>& sizes, std::string_view name) {
        const auto found = sizes.find(std::string(name));
        if (found == sizes.end())
            return std::nullopt;
        QPixmap pixmap(found->second, found->second);
        pixmap.fill(Qt::black);
        return QIcon(pixmap);
    }
};

} // namespace glimmerly
