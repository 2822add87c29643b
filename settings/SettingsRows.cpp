#include "settings/SettingsRows.h"

#include "ui/UiLayout.h"

namespace glimmerly {

namespace {

constexpr int rowSpacing = 12; // between a label and its value, at least

} // namespace

QLayout* makeValueRow(const QString& label, const TextStyle& labelStyle, UiLabel& value) {
    auto* row = tightLayout<QHBoxLayout>(nullptr, rowSpacing);
    // Both are text of one size, so their first lines have one baseline.
    row->addWidget(new UiLabel(label, labelStyle), 1, Qt::AlignTop);
    value.setWordWrap(false);
    row->addWidget(&value, 0, Qt::AlignTop);
    return row;
}

} // namespace glimmerly
