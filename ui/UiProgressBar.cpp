#include "ui/UiProgressBar.h"

#include "ui/UiColors.h"
#include "ui/UiStyle.h"

#include <QPainter>
#include <QVariantAnimation>

#include <algorithm>

namespace glimmerly {

namespace {

constexpr double busyPart = 0.3; // of the bar
constexpr int busyPeriod = 1400; // milliseconds from end to end

} // namespace

UiProgressBar::UiProgressBar(QWidget* parent) : QProgressBar(parent), motion_(new QVariantAnimation(this)) {
    setTextVisible(false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    motion_->setStartValue(-busyPart);
    motion_->setEndValue(1.0);
    motion_->setDuration(busyPeriod);
    motion_->setLoopCount(-1);
    connect(motion_, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
}

QSize UiProgressBar::sizeHint() const {
    constexpr int usualWidth = 160;
    return {usualWidth, ui_style::progressBarHeight};
}

void UiProgressBar::showEvent(QShowEvent* event) {
    QProgressBar::showEvent(event);
    if (isBusy())
        motion_->start();
}

void UiProgressBar::hideEvent(QHideEvent* event) {
    QProgressBar::hideEvent(event);
    motion_->stop();
}

void UiProgressBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF bar = rect();
    const double radius = bar.height() / 2;
    const UiColors& colors = uiColors(*this);
    painter.setBrush(colors.quaternaryFill);
    painter.drawRoundedRect(bar, radius, radius);
    double begin = 0;
    double end = 0;
    if (isBusy()) {
        begin = std::max(0.0, motion_->currentValue().toDouble());
        end = std::min(1.0, motion_->currentValue().toDouble() + busyPart);
    } else {
        end = static_cast<double>(value() - minimum()) / (maximum() - minimum());
    }
    if (end <= begin)
        return;
    const double shortest = bar.height(); // a full circle
    const QRectF part(begin * bar.width(), bar.top(), std::max(shortest, (end - begin) * bar.width()),
                      bar.height());
    painter.setBrush(colors.accent);
    painter.drawRoundedRect(part, radius, radius);
}

} // namespace glimmerly
