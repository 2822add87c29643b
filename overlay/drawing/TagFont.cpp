#include "overlay/drawing/TagFont.h"

#include "overlay/model/CanvasPixelGrid.h"
#include "overlay/model/SelectionStyle.h"
#include "ui/QtConversions.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>

#include <algorithm>
#include <cmath>

namespace glimmerly {

namespace {

QFont styled(QFont font) {
    font.setPixelSize(static_cast<int>(tagStyle.fontSize));
    font.setWeight(QFont::DemiBold);
    font.setStyle(QFont::StyleNormal);
    return font;
}

bool hasTabularDigits(const QFont& font) {
    const QFontMetricsF metrics(font);
    const double width = metrics.horizontalAdvance(u'0');
    const QString digits = QStringLiteral("123456789");
    return std::ranges::all_of(
        digits, [&](QChar digit) { return std::abs(metrics.horizontalAdvance(digit) - width) < 0.01; });
}

/// The desktop's own font if its digits allow, else the first that does.
QFont chooseFont() {
    const QFont candidates[] = {QGuiApplication::font(),
                                QFontDatabase::systemFont(QFontDatabase::GeneralFont),
                                QFont(QStringLiteral("DejaVu Sans")), QFont(QStringLiteral("Noto Sans"))};
    for (const QFont& candidate : candidates) {
        if (const QFont font = styled(candidate); hasTabularDigits(font))
            return font;
    }
    return styled(QFontDatabase::systemFont(QFontDatabase::FixedFont));
}

} // namespace

const QFont& tagFont() {
    static const auto* const font = new QFont(chooseFont()); // outlives the application object
    return *font;
}

Size tagTextSize(std::string_view text, double scale) {
    const QFontMetricsF metrics(tagFont());
    const auto wholePixels = [scale](double length) {
        return std::ceil(length * scale - pixelTolerance) / scale;
    };
    return {wholePixels(metrics.horizontalAdvance(toQString(text))), wholePixels(metrics.height())};
}

} // namespace glimmerly
