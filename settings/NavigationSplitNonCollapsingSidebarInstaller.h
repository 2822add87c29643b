#pragma once

#include <QWidget>

namespace glimmerly {

class MainQueue;

/// Keeps the sidebar of its window from being dragged away. A hidden and empty widget that stands in the
/// window's tree; whenever it is updated, it looks, on a later turn of the main loop, for the window's first
/// splitter, and makes that one's first child impossible to collapse. Without one nothing happens.
class NavigationSplitNonCollapsingSidebarInstaller : public QWidget {
public:
    NavigationSplitNonCollapsingSidebarInstaller(MainQueue& mainQueue, QWidget* parent);

    /// Called by the view around it, which knows when it has changed.
    void scheduleInstallation();

private:
    void install();

    MainQueue& mainQueue_;
};

} // namespace glimmerly
