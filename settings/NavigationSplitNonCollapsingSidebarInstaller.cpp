#include "settings/NavigationSplitNonCollapsingSidebarInstaller.h"

#include "platform/MainQueue.h"

#include <QPointer>
#include <QSplitter>

namespace glimmerly {

namespace {

/// Depth first, `root` itself before its children in their order.
QSplitter* firstSplitter(QWidget& root) {
    if (auto* splitter = qobject_cast<QSplitter*>(&root))
        return splitter;
    for (QObject* child : root.children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (auto* splitter = widget ? firstSplitter(*widget) : nullptr)
            return splitter;
    }
    return nullptr;
}

} // namespace

NavigationSplitNonCollapsingSidebarInstaller::NavigationSplitNonCollapsingSidebarInstaller(
    MainQueue& mainQueue, QWidget* parent)
    : QWidget(parent), mainQueue_(mainQueue) {
    hide();
}

void NavigationSplitNonCollapsingSidebarInstaller::scheduleInstallation() {
    mainQueue_.post([installer = QPointer(this)] {
        if (installer)
            installer->install();
    });
}

void NavigationSplitNonCollapsingSidebarInstaller::install() {
    if (auto* splitter = firstSplitter(*window()); splitter && splitter->count() > 0) {
        splitter->setCollapsible(0, false);
        splitter->setStretchFactor(0, 0); // a window that becomes narrower takes nothing from it
    }
}

} // namespace glimmerly
