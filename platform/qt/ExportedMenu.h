#pragma once

#include <QMenu>

namespace glimmerly {

/// A copy of a menu for a tray host that draws it itself. It follows the original's items and triggers them.
/// The original stays free of what Qt ties to an exported menu, so it can still be shown as a window of ours.
class ExportedMenu {
public:
    /// `original` must outlive the copy and keep its items.
    explicit ExportedMenu(const QMenu& original);

    [[nodiscard]] QMenu& menu() { return menu_; }

private:
    void add(QAction& original);

    QMenu menu_;
};

} // namespace glimmerly
