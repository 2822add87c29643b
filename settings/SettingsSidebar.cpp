#include "settings/SettingsSidebar.h"

#include "ui/DevicePixels.h"
#include "ui/FocusRing.h"
#include "ui/QtConversions.h"
#include "ui/UiColors.h"
#include "ui/UiStyle.h"
#include "ui/UiSymbol.h"

#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>

namespace glimmerly {

namespace {

constexpr int rowHeight = 32; // more when the text needs it
constexpr double rowCornerRadius = 6;
constexpr double ringGap = 2; // within the selection's colour

} // namespace

/// Paints a row: symbol and label, on the accent's colour when selected.
class SettingsSidebar::Row : public QStyledItemDelegate {
public:
    explicit Row(SettingsSidebar& sidebar) : QStyledItemDelegate(&sidebar), sidebar_(sidebar) {
        const auto textSize = static_cast<double>(sidebar.font().pixelSize());
        for (const auto& entry : settingsPanes)
            symbols_.push_back(SymbolImage::symbol(entry.symbol, {.pointSize = textSize}));
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
        return {0, std::max(rowHeight, option.fontMetrics.height() + rowPadding)};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const UiColors& colors = uiColors(sidebar_);
        const bool selected = option.state.testFlag(QStyle::State_Selected);
        paintShape(*painter, option, index, selected);
        QRect content = option.rect.adjusted(rowPadding, 0, -rowPadding, 0);
        if (const auto& symbol = symbols_.at(static_cast<std::size_t>(index.row()))) {
            QRect place = content;
            place.setWidth(symbol->size().toSize().width());
            paintSymbol(*painter, *symbol, place, selected ? colors.onAccent : colors.link);
            content.setLeft(place.right() + 1 + ui_style::symbolSpacing);
        }
        painter->setFont(sidebar_.font());
        painter->setPen(selected ? colors.onAccent : colors.primary);
        const QString label = index.data().toString();
        painter->drawText(content, Qt::AlignVCenter | Qt::AlignLeft,
                          option.fontMetrics.elidedText(label, Qt::ElideRight, content.width()));
    }

private:
    void paintShape(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                    bool selected) const {
        const UiColors& colors = uiColors(sidebar_);
        const bool hovered = option.state.testFlag(QStyle::State_MouseOver);
        const bool focused = sidebar_.showsFocus() && sidebar_.currentIndex() == index;
        painter.setRenderHint(QPainter::Antialiasing);
        const DevicePixels device(painter);
        const QRectF shape = device.alignedPixels(option.rect);
        const double radius = rowCornerRadius * device.scale();
        painter.setPen(Qt::NoPen);
        if (selected || hovered) {
            painter.setBrush(selected ? colors.accent : colors.separator);
            painter.drawRoundedRect(shape, radius, radius);
        }
        if (!focused)
            return;
        const double gap = selected ? ringGap * device.scale() : 0;
        paintFocusRing(painter, shape.adjusted(gap, gap, -gap, -gap), radius - gap, device.scale(),
                       selected ? colors.onAccent : colors.focusRing);
    }

    SettingsSidebar& sidebar_;
    std::vector<std::optional<SymbolImage>> symbols_;
};

SettingsSidebar::SettingsSidebar(QWidget* parent) : QListWidget(parent), focus_(*new FocusVisibility(*this)) {
    setAccessibleName(toQString(settings_text::sidebarName));
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFont(uiFont(text_style::body));
    setSelectionMode(QAbstractItemView::SingleSelection);
    setMouseTracking(true);
    viewport()->setAutoFillBackground(false);
    setItemDelegate(new Row(*this));
    for (const auto& entry : settingsPanes)
        addItem(toQString(entry.label));
    connect(this, &QListWidget::itemSelectionChanged, this, [this] {
        if (onSelect_)
            onSelect_();
    });
}

std::optional<SettingsPane> SettingsSidebar::selectedPane() const {
    const auto selected = selectedItems();
    if (selected.isEmpty())
        return std::nullopt;
    return settingsPanes.at(static_cast<std::size_t>(row(selected.front()))).pane;
}

void SettingsSidebar::select(std::optional<SettingsPane> pane) {
    if (pane)
        setCurrentRow(static_cast<int>(*pane));
    else
        clearSelection();
}

bool SettingsSidebar::showsFocus() const {
    return focus_.isVisible();
}

void SettingsSidebar::focusInEvent(QFocusEvent* event) {
    QListWidget::focusInEvent(event);
    viewport()->update();
}

void SettingsSidebar::focusOutEvent(QFocusEvent* event) {
    QListWidget::focusOutEvent(event);
    viewport()->update();
}

} // namespace glimmerly
