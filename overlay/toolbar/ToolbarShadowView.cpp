#include "overlay/toolbar/ToolbarShadowView.h"

#include "overlay/toolbar/ToolbarStyle.h"
#include "ui/DevicePixels.h"
#include "ui/ShadowImage.h"

#include <QEvent>
#include <QPaintEvent>

#include <cmath>

namespace glimmerly {

namespace style = toolbar_style;

namespace {

constexpr int drop = static_cast<int>(style::shadowDrop);
const int reach = static_cast<int>(std::ceil(style::shadowRadius * ShadowShape::reachInDeviations));

/// What the shadow of a bar of that frame covers.
QRect shadowFrame(const QRect& bar) {
    return bar.adjusted(-reach, -reach, reach, reach).translated(0, drop);
}

} // namespace

ToolbarShadowView::ToolbarShadowView(QWidget& toolbar) : toolbar_(toolbar) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    toolbar_.installEventFilter(this);
    joinParent();
}

bool ToolbarShadowView::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::ParentChange:
        joinParent();
        break;
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
    case QEvent::ZOrderChange:
        follow();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void ToolbarShadowView::joinParent() {
    setParent(toolbar_.parentWidget());
    follow();
}

void ToolbarShadowView::follow() {
    if (parentWidget() == nullptr)
        return;
    setGeometry(shadowFrame(toolbar_.geometry()));
    setVisible(!toolbar_.isHidden());
    stackUnder(&toolbar_);
}

const QImage& ToolbarShadowView::imageAtScale(double scale) {
    const auto pixels = [scale](int points) { return static_cast<int>(std::lround(points * scale)); };
    const QSize size(pixels(width()), pixels(height()));
    if (image_.size() != size)
        image_ = shadowImage(
            size, {pixels(reach), pixels(reach), pixels(toolbar_.width()), pixels(toolbar_.height())},
            {style::barCornerRadius * scale, style::shadowRadius * scale, style::shadowOpacity});
    return image_;
}

void ToolbarShadowView::paintEvent(QPaintEvent* event) {
    const int corner = static_cast<int>(style::barCornerRadius);
    const QRect coveredByBar =
        toolbar_.geometry().translated(-pos()).adjusted(corner, corner, -corner, -corner);
    QPainter painter(this);
    painter.setClipRegion(event->region() - coveredByBar);
    const DevicePixels device(painter);
    painter.drawImage(device.alignedPixels(rect()).topLeft(), imageAtScale(device.scale()));
}

} // namespace glimmerly
