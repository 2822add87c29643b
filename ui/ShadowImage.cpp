#include "ui/ShadowImage.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace glimmerly {
namespace {

/// The share of a Gaussian around 0 that lies below `x`.
double gaussianBelow(double x, double deviation) {
    return (1 + std::erf(x / (deviation * std::numbers::sqrt2))) / 2;
}

/// How far the rounded corner recedes from the sides at `y` below the top edge.
double cornerInset(double y, double height, double radius) {
    const double intoCorner = radius - std::min(y, height - y);
    return intoCorner <= 0 ? 0 : radius - std::sqrt(radius * radius - intoCorner * intoCorner);
}

/// The pixels of a row by their distance inwards from the nearer side of the caster; beyond the last one
/// all are like it.
struct Columns {
    int outermost;
    int innermost;

    [[nodiscard]] std::size_t count() const { return static_cast<std::size_t>(innermost - outermost) + 1; }
    [[nodiscard]] std::size_t indexOf(int x, const QRect& caster) const {
        const int inwards = std::min(x - caster.left(), caster.right() - x);
        return static_cast<std::size_t>(std::min(inwards, innermost) - outermost);
    }
};

/// One row of a caster of that width, blurred along x.
std::vector<double> blurredRow(const Columns& columns, double inset, int width, double deviation) {
    std::vector<double> row;
    row.reserve(columns.count());
    for (int inwards = columns.outermost; inwards <= columns.innermost; ++inwards) {
        const double center = inwards + 0.5;
        row.push_back(gaussianBelow(center - inset, deviation) -
                      gaussianBelow(center - (width - inset), deviation));
    }
    return row;
}

/// The blurred rows, blurred along y too, at `y` below the caster's top.
std::vector<double> blurredAt(int y, const std::vector<std::vector<double>>& rows, double deviation) {
    std::vector<double> coverage(rows.front().size());
    double distance = y;
    for (const auto& row : rows) {
        const double weight =
            gaussianBelow(distance + 0.5, deviation) - gaussianBelow(distance - 0.5, deviation);
        std::ranges::transform(row, coverage, coverage.begin(),
                               [weight](double part, double sum) { return sum + weight * part; });
        --distance;
    }
    return coverage;
}

} // namespace

QImage shadowImage(QSize size, const QRect& caster, const ShadowShape& shape) {
    const double reach = shape.cornerRadius + ShadowShape::reachInDeviations * shape.deviation;
    const Columns columns{-std::max(caster.left(), size.width() - 1 - caster.right()),
                          std::min(caster.width() / 2, static_cast<int>(std::ceil(reach)))};
    std::vector<std::vector<double>> rows;
    rows.reserve(static_cast<std::size_t>(caster.height()));
    for (int y = 0; y < caster.height(); ++y) {
        const double inset = cornerInset(y + 0.5, caster.height(), shape.cornerRadius);
        rows.push_back(blurredRow(columns, inset, caster.width(), shape.deviation));
    }

    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y) {
        const auto coverage = blurredAt(y - caster.top(), rows, shape.deviation);
        auto* pixels = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const double alpha = coverage[columns.indexOf(x, caster)] * shape.opacity;
            pixels[x] = qRgba(0, 0, 0, static_cast<int>(std::lround(alpha * 255)));
        }
    }
    return image;
}

} // namespace glimmerly
