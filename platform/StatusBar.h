#pragma once

#include <functional>

class QIcon;
class QMenu;
class QPoint;
class QString;

namespace glimmerly {

/// The program's item in the desktop's status area. It appears as soon as something on the desktop shows such
/// items, again after that was restarted, and is no error while nothing does.
class StatusItem {
public:
    virtual ~StatusItem() = default;

    virtual void show() = 0;
    /// `menu` must outlive the item.
    virtual void setMenu(QMenu& menu) = 0;
    /// A template picture: only its alpha counts, the colour is the desktop's. `description` is what the item
    /// is called where it cannot be seen.
    virtual void setTemplateImage(const QIcon& image, const QString& description) = 0;
    /// Text in the picture's place; there is room for one or two characters.
    virtual void setTitle(const QString& title) = 0;

    /// Whether something on the desktop shows such items now.
    [[nodiscard]] virtual bool hasHost() const = 0;
    /// Opens the menu with its top left corner at `place`, in the desktop's points.
    virtual void popUpMenu(const QPoint& place) = 0;
    /// Runs `action`, later, once the menu that was just used can no longer be seen on the screen, or when it
    /// should long have gone.
    virtual void whenMenuHasGone(std::function<void()> action) = 0;
};

} // namespace glimmerly
