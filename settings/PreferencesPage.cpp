#include "settings/PreferencesPage.h"

#include "settings/PreferencesSettingsSection.h"
#include "ui/QtConversions.h"
#include "ui/UiLayout.h"
#include "ui/UiText.h"

namespace glimmerly {

namespace {

constexpr int contentWidth = 720; // at most
constexpr int padding = 28;
constexpr int spacing = 20;
constexpr int belowTitle = 4;

} // namespace

PreferencesPage::PreferencesPage(const QString& title, QWidget* parent)
    : QScrollArea(parent), column_(tightLayout<QVBoxLayout>(nullptr, spacing)) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    // Keys that scroll come here from whichever control has the focus.
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName(title);
    auto* content = new QWidget;
    content->setMaximumWidth(contentWidth);
    auto* all = tightLayout<QVBoxLayout>(content, 0);
    all->setContentsMargins(padding, padding, padding, padding);
    auto* heading = new UiLabel(title, text_style::largeTitle);
    heading->setContentsMargins(0, 0, 0, belowTitle);
    column_->addWidget(heading);
    all->addLayout(column_);
    all->addStretch(1);
    setWidget(content);
}

PreferencesSettingsSection& PreferencesPage::addSection(const char* title) {
    auto* section = new PreferencesSettingsSection(toQString(title));
    column_->addWidget(section);
    return *section;
}

} // namespace glimmerly
