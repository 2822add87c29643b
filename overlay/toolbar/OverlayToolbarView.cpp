#include "overlay/toolbar/OverlayToolbarView.h"

#include "overlay/drawing/QtColor.h"
#include "overlay/toolbar/ToolbarAccessibility.h"
#include "overlay/toolbar/ToolbarGrabHandleView.h"
#include "overlay/toolbar/ToolbarShadowView.h"
#include "overlay/toolbar/ToolbarStyle.h"
#include "ui/DevicePixels.h"

#include <QEnterEvent>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainterPath>

#include <array>
#include <type_traits>

namespace glimmerly {

namespace style = toolbar_style;

namespace {

using Action = OverlayToolbarView::ToolbarActionType;

struct ToolRow {
    SelectionTool tool;
    std::string_view symbolName;
    std::string_view text;
};
constexpr std::array toolRows = {
    ToolRow{SelectionTool::rectangle, "rectangle", "Rectangle tool"},
    ToolRow{SelectionTool::arrow, "arrow.up.right", "Arrow tool"},
    ToolRow{SelectionTool::text, "textformat", "Text tool"},
};

struct ActionRow {
    Action action;
    std::string_view symbolName;
    std::string_view text;
};
constexpr std::array actionRows = {
    ActionRow{Action::undo, "arrow.uturn.backward", "Undo"},
    ActionRow{Action::redo, "arrow.uturn.forward", "Redo"},
    ActionRow{Action::close, "xmark", "Close"},
    ActionRow{Action::download, "arrow.down.to.line", "Download"},
    ActionRow{Action::done, "checkmark", "Done"},
};

std::optional<AnnotationColorOption> paletteOption(std::string_view id) {
    const auto* found = std::ranges::find(annotationPalette, id, &AnnotationColorOption::id);
    return found == annotationPalette.end() ? std::nullopt : std::optional(*found);
}

/// White on the white bar would not be seen: its button is a grey ring.
ToolbarIconButton::Description descriptionOf(const AnnotationColorOption& option) {
    const bool isWhite = option.id == "white";
    return {isWhite ? "circle" : "circle.fill", option.name, ToolbarButtonMode::toggle,
            isWhite ? style::whiteSwatchTint : option.color};
}

/// By value: a callback may close the overlay, and with it the toolbar that holds the function.
template <typename... Parameters>
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void notify(std::function<void(Parameters...)> callback, std::type_identity_t<Parameters>... arguments) {
    if (callback)
        callback(arguments...);
}

} // namespace

OverlayToolbarView::OverlayToolbarView(QWidget* parent)
    : QWidget(parent), stack_(new QHBoxLayout(this)), shadow_(new ToolbarShadowView(*this)) {
    installToolbarAccessibility();
    setAccessibleName(QStringLiteral("Annotation toolbar"));
    setFocusPolicy(Qt::NoFocus);
    setMouseTracking(true);
    setCursor(Qt::ArrowCursor);
    setLayoutDirection(Qt::LeftToRight); // the bar reads the same in every language

    stack_->setContentsMargins(style::barPadding, style::barPadding, style::barPadding, style::barPadding);
    stack_->setSpacing(0); // the separators hold the gaps
    addGrabHandle();
    addSeparator();
    addToolGroup();
    addSeparator();
    addColorGroup();
    addSeparator();
    addActionGroup();
    resize(stack_->sizeHint());
}

OverlayToolbarView::~OverlayToolbarView() {
    delete shadow_;
}

void OverlayToolbarView::addGrabHandle() {
    grabHandle_ = new ToolbarGrabHandleView(this);
    grabHandle_->onDragStateChanged = [this](bool isDragging) {
        notify(onHandleDragStateChanged, isDragging);
    };
    grabHandle_->onDragDelta = [this](double dx, double dy) { notify(onHandleDragDelta, dx, dy); };
    grabHandle_->onSuggestToolbarCursorRefresh = [this](QPointF locationInWindow) {
        refreshCursor(mapFrom(window(), locationInWindow));
    };
    stack_->addWidget(grabHandle_, 0, Qt::AlignVCenter);
}

void OverlayToolbarView::addSeparator() {
    auto* gap = new QSpacerItem(style::separatorWidth + 2 * style::groupSpacing, style::separatorHeight,
                                QSizePolicy::Fixed, QSizePolicy::Fixed);
    separators_.push_back(gap);
    stack_->addSpacerItem(gap);
}

void OverlayToolbarView::addToolGroup() {
    auto* group = new QHBoxLayout;
    for (const ToolRow& row : toolRows) {
        auto& button =
            addButton(*group, {row.symbolName, row.text, ToolbarButtonMode::toggle, style::symbolTint});
        tools_.add(button, row.tool);
        connect(&button, &QAbstractButton::clicked, this,
                [this, tool = row.tool] { handleToolButtonPressed(tool); });
    }
    stack_->addLayout(group);
}

void OverlayToolbarView::addColorGroup() {
    auto* group = new QHBoxLayout;
    for (const AnnotationColorOption& option : annotationPalette) {
        auto& button = addButton(*group, descriptionOf(option));
        colors_.add(button, option);
        connect(&button, &QAbstractButton::clicked, this,
                [this, &option] { handleColorButtonPressed(option); });
    }
    stack_->addLayout(group);
}

void OverlayToolbarView::addActionGroup() {
    auto* group = new QHBoxLayout;
    for (const ActionRow& row : actionRows) {
        auto& button =
            addButton(*group, {row.symbolName, row.text, ToolbarButtonMode::momentary, style::symbolTint});
        connect(&button, &QAbstractButton::clicked, this,
                [this, action = row.action] { handleActionButtonPressed(action); });
    }
    stack_->addLayout(group);
}

ToolbarIconButton& OverlayToolbarView::addButton(QHBoxLayout& group,
                                                 const ToolbarIconButton::Description& description) {
    auto* button = new ToolbarIconButton(description, this);
    group.setSpacing(style::buttonSpacing);
    group.addWidget(button, 0, Qt::AlignVCenter);
    return *button;
}

void OverlayToolbarView::setSelectedTool(std::optional<SelectionTool> tool) {
    if (const auto lit = tools_.light(tool))
        notify(onToolChanged, lit);
}

void OverlayToolbarView::setSelectedColor(std::optional<std::string_view> id) {
    if (const auto lit = colors_.light(id ? paletteOption(*id) : std::nullopt))
        notify(onColorChanged, lit);
}

void OverlayToolbarView::handleToolButtonPressed(SelectionTool tool) {
    const auto lit = tools_.toggle(tool);
    if (lit && !colors_.litChoice())
        notify(onColorChanged, colors_.lightFirst());
    notify(onToolChanged, lit);
}

void OverlayToolbarView::handleColorButtonPressed(const AnnotationColorOption& option) {
    // A tool needs a colour: while one is lit, a press never puts the colour out.
    const auto lit = tools_.litChoice() ? colors_.light(option) : colors_.toggle(option);
    notify(onColorChanged, lit);
}

void OverlayToolbarView::handleActionButtonPressed(ToolbarActionType action) const {
    switch (action) {
    case ToolbarActionType::undo:
        notify(onUndoTapped);
        break;
    case ToolbarActionType::redo:
        notify(onRedoTapped);
        break;
    case ToolbarActionType::close:
        notify(onCloseTapped);
        break;
    case ToolbarActionType::download:
        notify(onDownloadTapped);
        break;
    case ToolbarActionType::done:
        notify(onDoneTapped);
        break;
    }
}

Qt::CursorShape OverlayToolbarView::cursorAt(QPoint point) const {
    const QWidget* part = childAt(point);
    if (part == grabHandle_)
        return grabHandle_->isDragging() ? Qt::ClosedHandCursor : Qt::OpenHandCursor;
    return part != nullptr ? Qt::PointingHandCursor : Qt::ArrowCursor;
}

void OverlayToolbarView::refreshCursor(QPointF point) {
    // The handle and the buttons have no cursors of their own and show the bar's.
    setCursor(cursorAt(QPoint(qFloor(point.x()), qFloor(point.y()))));
}

void OverlayToolbarView::enterEvent(QEnterEvent* event) {
    refreshCursor(event->position());
    QWidget::enterEvent(event);
}

void OverlayToolbarView::mouseMoveEvent(QMouseEvent* event) {
    QWidget::mouseMoveEvent(event);
    refreshCursor(event->position());
}

void OverlayToolbarView::leaveEvent(QEvent* event) {
    setCursor(Qt::ArrowCursor);
    QWidget::leaveEvent(event);
}

void OverlayToolbarView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const DevicePixels device(painter);

    const QRectF bar = device.alignedPixels(rect());
    const double radius = style::barCornerRadius * device.scale();
    painter.setBrush(toQColor(style::barColor));
    painter.drawRoundedRect(bar, radius, radius);

    const double line = device.lineWidth(style::barBorderWidth);
    QPainterPath border;
    border.addRoundedRect(bar, radius, radius);
    border.addRoundedRect(bar.adjusted(line, line, -line, -line), radius - line, radius - line);
    painter.fillPath(border, toQColor(style::barBorderColor));

    for (const QSpacerItem* gap : separators_) {
        QRectF separator = device.alignedPixels(gap->geometry().adjusted(style::groupSpacing, 0, 0, 0));
        separator.setWidth(device.lineWidth(style::separatorWidth));
        painter.fillRect(separator, toQColor(style::separatorColor));
    }
}

} // namespace glimmerly
