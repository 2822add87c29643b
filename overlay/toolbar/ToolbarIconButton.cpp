#include "overlay/toolbar/ToolbarIconButton.h"

#include "overlay/drawing/QtColor.h"
#include "overlay/toolbar/ToolbarStyle.h"
#include "ui/DevicePixels.h"
#include "ui/QtConversions.h"

#include <QEasingCurve>
#include <QMouseEvent>
#include <QToolTip>

namespace glimmerly {

namespace style = toolbar_style;

namespace {

/// Slow at both ends, as a cubic Bézier curve.
QEasingCurve easeInEaseOut() {
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({0.42, 0}, {0.58, 1}, {1, 1});
    return curve;
}

/// The symbol at its own size: the toolbar's are drawn on the pixels of 14-point semibold text.
std::optional<SymbolImage> symbolNamed(std::string_view name) {
    return SymbolImage::file(":/symbols/" + toQString(name) + ".svg");
}

} // namespace

ToolbarIconButton::ToolbarIconButton(const Description& description, QWidget* parent)
    : QAbstractButton(parent), symbol_(symbolNamed(description.symbolName)), mode_(description.mode),
      iconTintColor_(toQColor(description.iconTintColor)) {
    setFixedSize(style::buttonSize, style::buttonSize);
    setCheckable(mode_ == ToolbarButtonMode::toggle);
    setAccessibleName(toQString(description.accessibilityText));
    setToolTip(toQString(description.accessibilityText));
    setFocusPolicy(Qt::NoFocus);
    setMouseTracking(true);
    // Filled with the bar's colour it is opaque, so that a change of look repaints nothing below it. Qt 6.4's
    // Fusion style takes WA_OpaquePaintEvent away from buttons.
    setPalette(toQColor(style::barColor));
    setBackgroundRole(QPalette::Window);
    setAutoFillBackground(true);

    lookChange_.setDuration(static_cast<int>(style::lookChangeDuration.count()));
    lookChange_.setEasingCurve(easeInEaseOut());
    lookChange_.setStartValue(0.0);
    lookChange_.setEndValue(1.0);
    connect(&lookChange_, &QVariantAnimation::valueChanged, this, [this](const QVariant& progress) {
        showLook(lookBetween(lookBefore_, lookAfter_, progress.toDouble()));
    });
    // Only a press by assistive technology comes this way.
    connect(this, &QAbstractButton::pressed, this, [this] { applyVisualState(Transition::animated); });
    connect(this, &QAbstractButton::released, this, [this] { applyVisualState(Transition::animated); });
    applyVisualState(Transition::immediate);
}

QSize ToolbarIconButton::sizeHint() const {
    return {style::buttonSize, style::buttonSize};
}

void ToolbarIconButton::setOn(bool isOn) {
    setChecked(isOn);
    applyVisualState(Transition::animated);
}

void ToolbarIconButton::setPressed(bool isPressed) {
    setDown(isPressed);
    applyVisualState(Transition::animated);
}

void ToolbarIconButton::applyVisualState(Transition transition) {
    const auto target = lookForState({mode_, isOn(), isHovered_, isDown()});
    if (transition == Transition::immediate || !isVisible()) {
        lookChange_.stop();
        lookAfter_ = target;
        showLook(target);
        return;
    }
    if (target == lookAfter_)
        return;
    lookChange_.stop();
    lookBefore_ = look_;
    lookAfter_ = target;
    lookChange_.start();
}

void ToolbarIconButton::showLook(const ToolbarButtonLook& look) {
    if (look_ == look)
        return;
    look_ = look;
    update();
}

bool ToolbarIconButton::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QAbstractButton::event(event);
    // Below the button: where Qt puts it, at the pointer, it covers what it explains.
    QToolTip::showText(mapToGlobal(QPoint(0, height())), toolTip(), this);
    return true;
}

void ToolbarIconButton::enterEvent(QEnterEvent*) {
    isHovered_ = true;
    applyVisualState(Transition::animated);
}

void ToolbarIconButton::leaveEvent(QEvent*) {
    isHovered_ = false;
    applyVisualState(Transition::animated);
}

// Qt's own handlers would let some of a press's events through to the canvas, hence these three.

void ToolbarIconButton::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        setPressed(true);
}

void ToolbarIconButton::mouseMoveEvent(QMouseEvent* event) {
    if (!event->buttons().testFlag(Qt::LeftButton)) {
        event->ignore(); // a mere hover, which the toolbar's cursor follows
        return;
    }
    setPressed(isInside(event->position()));
}

void ToolbarIconButton::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    setPressed(false);
    if (isInside(event->position()))
        Q_EMIT clicked(isOn()); // last, because it may delete this button
}

void ToolbarIconButton::hideEvent(QHideEvent*) {
    isHovered_ = false;
    setDown(false);
    applyVisualState(Transition::immediate);
}

bool ToolbarIconButton::isInside(const QPointF& position) const {
    return position.x() >= 0 && position.x() < width() && position.y() >= 0 && position.y() < height();
}

void ToolbarIconButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const DevicePixels device(painter);

    const QRectF button = device.alignedPixels(rect());
    const double radius = style::buttonCornerRadius * device.scale();
    painter.setBrush(toQColor(Color::white(style::buttonBackgroundLevel, look_.backgroundAlpha)));
    painter.drawRoundedRect(button, radius, radius);
    paintIcon(painter, button.toRect(), device.scale());
}

void ToolbarIconButton::paintIcon(QPainter& painter, const QRect& buttonPixels, double pixelsPerPoint) {
    if (!symbol_)
        return;
    if (icon_.size() != buttonPixels.size())
        icon_ = tinted(symbol_->rendered(buttonPixels.size(), pixelsPerPoint), iconTintColor_);
    const QPointF center = QRectF(buttonPixels).center();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(center);
    painter.scale(look_.iconScale, look_.iconScale);
    painter.translate(-center);
    painter.drawImage(buttonPixels.topLeft(), icon_);
}

} // namespace glimmerly
