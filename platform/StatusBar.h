#pragma once

class QIcon;
class QMenu;
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
    /// A template picture: only its alpha counts, the colour is the desktop's.
    virtual void setTemplateImage(const QIcon& image) = 0;
    virtual void setTitle(const QString& title) = 0;
};

} // namespace glimmerly
