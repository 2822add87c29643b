#include "ui/UiSheet.h"

#include "ui/DevicePixels.h"
#include "ui/UiColors.h"
#include "ui/UiShapes.h"
#include "ui/UiStyle.h"

#include <QAccessibleWidget>
#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>

namespace glimmerly {

namespace {

constexpr int margin = 20; // between the window's edges and the form, at least

bool takesKeyboard(const QWidget& widget) {
    return widget.isEnabled() && widget.isVisibleTo(widget.window()) &&
           (widget.focusPolicy() & Qt::TabFocus) != 0;
}

/// What assistive technology learns of a sheet.
class SheetInterface : public QAccessibleWidget {
public:
    explicit SheetInterface(UiSheet* sheet) : QAccessibleWidget(sheet, QAccessible::Dialog) {}

    [[nodiscard]] QAccessible::State state() const override {
        auto state = QAccessibleWidget::state();
        state.modal = true;
        return state;
    }
};

QAccessibleInterface* makeSheetInterface(const QString&, QObject* object) {
    auto* sheet = dynamic_cast<UiSheet*>(object);
    return sheet ? new SheetInterface(sheet) : nullptr;
}

} // namespace

UiSheet::UiSheet(QWidget& window, QWidget* content)
    : QWidget(&window), area_(new QScrollArea(this)), focusBefore_(window.focusWidget()) {
    QAccessible::installFactory(makeSheetInterface); // once
    setAccessibleName(content->accessibleName());
    area_->setFrameShape(QFrame::NoFrame);
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area_->setWidgetResizable(true);
    area_->setFocusPolicy(Qt::NoFocus);
    area_->viewport()->setAutoFillBackground(false);
    area_->setWidget(content);
    content->setAutoFillBackground(false);
    content->installEventFilter(this);
    window.installEventFilter(this);
    setGeometry(window.rect());
    show();
    raise();
    setFocus(); // away from the window, even when nothing in the form takes it
    UiSheet::focusNextPrevChild(true);
    disableBelow();
}

UiSheet::~UiSheet() {
    for (const auto& widget : below_) {
        if (widget)
            widget->setEnabled(true);
    }
    giveFocusBack();
}

/// The mouse does not reach what is covered, and Tab does not leave the form; but assistive technology would
/// still find the controls there and press them.
void UiSheet::disableBelow() {
    for (QObject* child : parentWidget()->children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (!widget || widget == this || widget->isWindow() || !widget->isEnabled())
            continue;
        below_.emplace_back(widget);
        widget->setEnabled(false);
    }
}

void UiSheet::giveFocusBack() {
    const auto takesIt = [this](const QWidget& widget) {
        return &widget != this && !isAncestorOf(&widget) && takesKeyboard(widget);
    };
    QWidget* const first = focusBefore_ ? focusBefore_.data() : this;
    QWidget* next = first;
    while (!takesIt(*next)) {
        next = next->nextInFocusChain();
        if (next == first)
            return;
    }
    next->setFocus(Qt::ActiveWindowFocusReason); // seen, if it was seen before
}

bool UiSheet::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    else if (watched == area_->widget() && event->type() == QEvent::LayoutRequest)
        place();
    return false;
}

void UiSheet::resizeEvent(QResizeEvent*) {
    place();
}

void UiSheet::place() {
    const QWidget& content = *area_->widget();
    const int wanted =
        std::max(content.heightForWidth(content.maximumWidth()), content.minimumSizeHint().height());
    const int room = height() - 2 * margin;
    QSize size(content.maximumWidth(), std::min(wanted, room));
    if (wanted > room)
        size.rwidth() += area_->verticalScrollBar()->sizeHint().width();
    area_->setGeometry(QRect(QPoint((width() - size.width()) / 2, (height() - size.height()) / 2), size));
    update();
}

void UiSheet::paintEvent(QPaintEvent*) {
    const UiColors& colors = uiColors(*this);
    QPainter painter(this);
    painter.fillRect(rect(), colors.behindSheet);
    painter.setRenderHint(QPainter::Antialiasing);
    const DevicePixels device(painter);
    const double line = device.lineWidth(ui_style::hairline);
    const double radius = ui_style::cardCornerRadius * device.scale();
    const QRectF card = device.alignedPixels(area_->geometry());
    const double outset = line / 2;
    const QPainterPath shape = continuousCorners(card.adjusted(-outset, -outset, outset, outset), radius);
    painter.fillPath(shape, colors.windowBackground);
    painter.strokePath(shape, QPen(colors.controlOutline, line));
}

void UiSheet::mousePressEvent(QMouseEvent* event) {
    event->accept(); // not the window's
}

bool UiSheet::focusNextPrevChild(bool next) {
    const QWidget* focused = window()->focusWidget();
    auto* start = focused && isAncestorOf(focused) ? const_cast<QWidget*>(focused) : this;
    auto* candidate = start;
    do {
        candidate = next ? candidate->nextInFocusChain() : candidate->previousInFocusChain();
        if (isAncestorOf(candidate) && takesKeyboard(*candidate)) {
            candidate->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            area_->ensureWidgetVisible(candidate);
            return true;
        }
    } while (candidate != start);
    return false;
}

} // namespace glimmerly
