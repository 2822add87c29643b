#include "ui/UiSpinner.h"

#include "ui/UiColors.h"

#include <QPainter>

#include <chrono>

namespace glimmerly {

namespace {

constexpr int side = 16;
constexpr int spokes = 8;
constexpr double innerRadius = 3.5;
constexpr double outerRadius = 7;
constexpr double spokeWidth = 1.75;
constexpr double faintest = 0.15;
constexpr std::chrono::milliseconds stepTime{100};

} // namespace

UiSpinner::UiSpinner(const QString& name, QWidget* parent) : QWidget(parent) {
    setFixedSize(side, side);
    setAccessibleName(name);
    turning_.setInterval(stepTime);
    connect(&turning_, &QTimer::timeout, this, [this] {
        step_ = (step_ + 1) % spokes;
        update();
    });
}

void UiSpinner::showEvent(QShowEvent*) {
    turning_.start();
}

void UiSpinner::hideEvent(QHideEvent*) {
    turning_.stop();
}

void UiSpinner::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(side / 2.0, side / 2.0);
    QColor color = uiColors(*this).secondary;
    for (int spoke = 0; spoke < spokes; ++spoke) {
        const int age = (step_ - spoke + spokes) % spokes;
        color.setAlphaF(static_cast<float>(1 - (1 - faintest) * age / (spokes - 1)));
        painter.setPen(QPen(color, spokeWidth, Qt::SolidLine, Qt::RoundCap));
        painter.save();
        painter.rotate(360.0 * spoke / spokes);
        painter.drawLine(QPointF(0, -innerRadius), QPointF(0, -outerRadius));
        painter.restore();
    }
}

} // namespace glimmerly
