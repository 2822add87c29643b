#include "platform/qt/ExportedMenu.h"

#include "platform/qt/PanelColors.h"
#include "platform/qt/PictureIconEngine.h"

#include <QAction>
#include <QIcon>

namespace glimmerly {

namespace {

void copyLooks(const QAction& original, QAction& copy) {
    copy.setText(original.text());
    copy.setEnabled(original.isEnabled());
    copy.setVisible(original.isVisible());
    copy.setShortcut(original.shortcut());
    copy.setIcon(tintedTemplate(original.icon(), [](QIcon::Mode) { return hostMenuTextColor(); }));
}

} // namespace

ExportedMenu::ExportedMenu(const QMenu& original) {
    for (QAction* action : original.actions())
        add(*action);
}

void ExportedMenu::add(QAction& original) {
    if (original.isSeparator()) {
        menu_.addSeparator();
        return;
    }
    QAction* copy = menu_.addAction(original.text());
    copyLooks(original, *copy);
    QObject::connect(copy, &QAction::triggered, &original, &QAction::trigger);
    QObject::connect(&original, &QAction::changed, copy, [&original, copy] { copyLooks(original, *copy); });
}

} // namespace glimmerly
