#include "settings/PreferencesSettingsSection.h"

#include "ui/UiLayout.h"
#include "ui/UiShapes.h"
#include "ui/UiStyle.h"
#include "ui/UiText.h"

namespace glimmerly {

namespace {

constexpr int boxPadding = 16;
constexpr int contentSpacing = 12;

} // namespace

PreferencesSettingsSection::PreferencesSettingsSection(const QString& title, QWidget* parent)
    : QWidget(parent), box_(new Card(boxPadding)), content_(tightLayout<QVBoxLayout>(box_, contentSpacing)) {
    auto* column = tightLayout<QVBoxLayout>(this, ui_style::captionToCardSpacing);
    auto* caption = new UiLabel(title.toUpper(), text_style::sectionTitle);
    caption->setAccessibleName(title);
    column->addWidget(caption);
    column->addWidget(box_);
}

void PreferencesSettingsSection::setBleed(const QMargins& bleed) {
    box_->setContentsMargins(QMargins(boxPadding, boxPadding, boxPadding, boxPadding) - bleed);
}

} // namespace glimmerly
