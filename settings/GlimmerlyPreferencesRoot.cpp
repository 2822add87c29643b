#include "settings/GlimmerlyPreferencesRoot.h"

#include "platform/StatusBar.h"
#include "settings/AboutPreferencesPane.h"
#include "settings/GeneralPreferencesPane.h"
#include "settings/NavigationSplitNonCollapsingSidebarInstaller.h"
#include "settings/SettingsSidebar.h"
#include "ui/DevicePixels.h"
#include "ui/QtConversions.h"
#include "ui/UiButton.h"
#include "ui/UiColors.h"
#include "ui/UiLayout.h"
#include "ui/UiStyle.h"
#include "ui/UiSymbol.h"

#include <QEvent>
#include <QPainter>
#include <QSplitter>
#include <QStackedWidget>

namespace glimmerly {

namespace {

constexpr int sidebarWidth = 200;
constexpr int sidebarPadding = 10;
constexpr double placeholderSymbolSize = 40;
constexpr int placeholderSpacing = 8;
constexpr int placeholderPadding = 28;

/// The sidebar's background, with a line where it ends.
class SidebarColumn : public QWidget {
public:
    SidebarColumn() { setFixedWidth(sidebarWidth); }

    // The splitter goes by what a widget wants to be, not by what it can be.
    [[nodiscard]] QSize sizeHint() const override { return {sidebarWidth, QWidget::sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent*) override {
        const UiColors& colors = uiColors(*this);
        QPainter painter(this);
        painter.fillRect(rect(), colors.sidebarBackground);
        const DevicePixels device(painter);
        const double line = device.lineWidth(ui_style::hairline);
        QRectF edge = device.alignedPixels(rect());
        edge.setLeft(edge.right() - line);
        painter.fillRect(edge, colors.separator);
    }
};

QWidget* makePlaceholder() {
    auto* placeholder = new QWidget;
    auto* column = tightLayout<QVBoxLayout>(placeholder, placeholderSpacing);
    column->setContentsMargins(placeholderPadding, placeholderPadding, placeholderPadding,
                               placeholderPadding);
    column->addStretch();
    column->addWidget(new UiSymbol("sidebar.left", placeholderSymbolSize), 0, Qt::AlignHCenter);
    auto* title = new UiLabel(toQString(settings_text::nothingSelected), text_style::title2);
    auto* description =
        new UiLabel(toQString(settings_text::nothingSelectedDescription), text_style::calloutSecondary);
    for (auto* label : {title, description}) {
        label->setAlignment(Qt::AlignHCenter);
        column->addWidget(label);
    }
    column->addStretch();
    return placeholder;
}

} // namespace

GlimmerlyPreferencesRoot::GlimmerlyPreferencesRoot(const SettingsServices& services, QWidget* parent)
    : QWidget(parent), services_(services), split_(new QSplitter(this)), sidebar_(new SettingsSidebar),
      menu_(new UiButton(toQString(settings_text::menu), {.kind = ButtonKind::link})),
      sidebarColumn_(makeSidebar()), detail_(new QStackedWidget),
      installer_(new NavigationSplitNonCollapsingSidebarInstaller(services.mainQueue, this)) {
    setMinimumSize(minimumWidth, minimumHeight);
    split_->addWidget(sidebarColumn_);
    split_->addWidget(detail_);
    sidebarColumn_->lower(); // read before the detail
    split_->setStretchFactor(1, 1);
    split_->setHandleWidth(0);
    tightLayout<QVBoxLayout>(this, 0)->addWidget(split_);
    sidebarColumn_->installEventFilter(this);
    connect(split_, &QSplitter::splitterMoved, this, [this](int position, int) {
        setColumnVisibility(position == 0 ? ColumnVisibility::detailOnly : ColumnVisibility::all);
    });
    sidebar_->select(SettingsPane::general);
    sidebar_->setOnSelect([this] { showSelected(); });
    showSelected();
}

QWidget* GlimmerlyPreferencesRoot::makeSidebar() {
    auto* column = new SidebarColumn;
    auto* layout = tightLayout<QVBoxLayout>(column, sidebarPadding);
    layout->setContentsMargins(sidebarPadding, sidebarPadding, sidebarPadding, sidebarPadding);
    layout->addWidget(sidebar_, 1);
    auto* footer = tightLayout<QHBoxLayout>(nullptr, 0);
    footer->setContentsMargins(SettingsSidebar::rowPadding - ui_style::linkSidePadding, 0, 0, 0);
    footer->addWidget(menu_);
    footer->addStretch();
    layout->addLayout(footer);
    menu_->setSymbol("ellipsis.circle");
    menu_->hide();
    connect(menu_, &QPushButton::clicked, this,
            [this] { services_.statusItem.popUpMenu(menu_->mapToGlobal(QPoint(0, menu_->height()))); });
    return column;
}

std::optional<SettingsPane> GlimmerlyPreferencesRoot::selectedPane() const {
    return sidebar_->selectedPane();
}

void GlimmerlyPreferencesRoot::setSelectedPane(std::optional<SettingsPane> pane) {
    sidebar_->select(pane);
}

void GlimmerlyPreferencesRoot::showSelected() {
    detail_->setCurrentWidget(&page(selectedPane()));
    installer_->scheduleInstallation();
}

QWidget& GlimmerlyPreferencesRoot::page(std::optional<SettingsPane> pane) {
    auto*& page = pages_.at(pane ? static_cast<std::size_t>(*pane) : settingsPanes.size());
    if (!page) {
        page = makePage(pane);
        detail_->addWidget(page);
    }
    return *page;
}

QWidget* GlimmerlyPreferencesRoot::makePage(std::optional<SettingsPane> pane) const {
    if (!pane)
        return makePlaceholder();
    switch (*pane) {
    case SettingsPane::general:
        return new GeneralPreferencesPane(services_.recorder, services_.permission);
    case SettingsPane::about:
        break;
    }
    return new AboutPreferencesPane(services_);
}

void GlimmerlyPreferencesRoot::setColumnVisibility(ColumnVisibility visibility) {
    columnVisibility_ = visibility;
    if (visibility == ColumnVisibility::all)
        return;
    columnVisibility_ = ColumnVisibility::all;
    sidebarColumn_->show();
    split_->setSizes({sidebarWidth, split_->width() - sidebarWidth});
    installer_->scheduleInstallation();
}

bool GlimmerlyPreferencesRoot::eventFilter(QObject*, QEvent* event) {
    // Hidden by itself, not with the window.
    if (event->type() == QEvent::HideToParent && sidebarColumn_->isHidden())
        setColumnVisibility(ColumnVisibility::detailOnly);
    return false;
}

void GlimmerlyPreferencesRoot::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // Where no status area shows the menu, this window is where the user comes to.
    menu_->setVisible(!services_.statusItem.hasHost());
    installer_->scheduleInstallation();
}

} // namespace glimmerly
