#include "ui/UiSwitch.h"

#include "ui/DevicePixels.h"
#include "ui/FocusRing.h"
#include "ui/UiColors.h"
#include "ui/UiStyle.h"
#include "ui/UiText.h"

#include <algorithm>

namespace glimmerly {

namespace {

constexpr int trackWidth = 36;
constexpr int trackHeight = 20;
constexpr double knobInset = 2;
constexpr int labelSpacing = 12;
constexpr double disabledOpacity = 0.4;
constexpr int labelFlags = Qt::TextWordWrap | Qt::TextHideMnemonic | Qt::AlignLeft;

QRect labelBounds(const QFontMetrics& metrics, const QString& label, int width) {
    return metrics.boundingRect(QRect(0, 0, std::max(1, width), 1 << 14), labelFlags, label);
}

} // namespace

UiSwitch::UiSwitch(const QString& label, QWidget* parent)
    : QCheckBox(parent), focus_(*new FocusVisibility(*this)) {
    setText(QString(label).replace(QLatin1Char('&'), QLatin1String("&&")));
    setAccessibleName(label);
    setFont(uiFont(text_style::body));
    setAttribute(Qt::WA_Hover);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QSize UiSwitch::sizeHint() const {
    const int width = labelBounds(fontMetrics(), text(), 1 << 14).width() + labelSpacing + trackWidth;
    return {width + ringMargin, heightForWidth(width + ringMargin)};
}

QSize UiSwitch::minimumSizeHint() const {
    return {trackWidth + ringMargin, trackHeight + 2 * ringMargin};
}

int UiSwitch::heightForWidth(int width) const {
    const int room = width - labelSpacing - trackWidth - ringMargin;
    return std::max(trackHeight + 2 * ringMargin, labelBounds(fontMetrics(), text(), room).height());
}

void UiSwitch::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!looksEnabled(*this))
        painter.setOpacity(disabledOpacity);
    const QRect track(width() - trackWidth - ringMargin, (height() - trackHeight) / 2, trackWidth,
                      trackHeight);
    painter.setPen(uiColors(*this).primary);
    painter.drawText(QRect(0, 0, track.left() - labelSpacing, height()), labelFlags | Qt::AlignVCenter,
                     text());
    paintTrack(painter, track);
}

void UiSwitch::paintTrack(QPainter& painter, const QRectF& points) const {
    const UiColors& colors = uiColors(*this);
    painter.setRenderHint(QPainter::Antialiasing);
    const DevicePixels device(painter);
    const QRectF track = device.alignedPixels(points);
    const double radius = track.height() / 2;
    const bool highlighted = underMouse() && isEnabled();
    QColor fill = isChecked() ? colors.accent : colors.strongFill;
    if (isDown() || highlighted)
        fill = isDown() ? fill.darker(115) : fill.darker(105);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(track, radius, radius);

    const double inset = knobInset * device.scale();
    const double diameter = track.height() - 2 * inset;
    const double left = isChecked() ? track.right() - inset - diameter : track.left() + inset;
    painter.setBrush(colors.onAccent);
    painter.drawEllipse(QRectF(left, track.top() + inset, diameter, diameter));
    if (focus_.isVisible()) {
        const double gap = ringMargin * device.scale();
        paintFocusRing(painter, track.adjusted(-gap, -gap, gap, gap), radius + gap, device.scale(),
                       colors.focusRing);
    }
}

} // namespace glimmerly
