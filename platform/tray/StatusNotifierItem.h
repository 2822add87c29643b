#pragma once

#include "platform/tray/TrayTypes.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QIcon>
#include <QObject>

#include <functional>

namespace glimmerly {

/// The status item as an object on the session bus, for panels that draw such items themselves. It is on the
/// bus as long as it lives; one at a time. The members that start with a capital are called by the panel.
class StatusNotifierItem : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QDBusObjectPath Menu READ menuPath)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(glimmerly::TrayPixmaps IconPixmap READ iconPixmap)
    Q_PROPERTY(glimmerly::TrayToolTip ToolTip READ toolTip)

public:
    /// `menuPath` is where the menu lies on the same connection; `openMenu` is for panels that leave that to
    /// the program.
    StatusNotifierItem(const QDBusConnection& bus, QString id, const QString& menuPath,
                       std::function<void()> openMenu);
    ~StatusNotifierItem() override;

    void setIcon(const QIcon& icon, const QString& title);

    [[nodiscard]] QString category() const { return "ApplicationStatus"; }
    [[nodiscard]] QString id() const { return id_; }
    [[nodiscard]] QString title() const { return title_; }
    [[nodiscard]] QString status() const { return "Active"; }
    [[nodiscard]] int windowId() const { return 0; }
    [[nodiscard]] bool itemIsMenu() const { return true; }
    [[nodiscard]] QDBusObjectPath menuPath() const { return menuPath_; }
    [[nodiscard]] QString iconName() const { return icon_.name(); }
    [[nodiscard]] TrayPixmaps iconPixmap() const { return trayPixmaps(icon_); }
    [[nodiscard]] TrayToolTip toolTip() const { return {.title = title_}; }

public Q_SLOTS:
    void Activate(int x, int y);
    void SecondaryActivate(int x, int y);
    void ContextMenu(int x, int y);
    void Scroll(int delta, const QString& orientation);

Q_SIGNALS:
    void NewIcon();
    void NewTitle();
    void NewToolTip();

private:
    QDBusConnection bus_;
    QString id_;
    QDBusObjectPath menuPath_;
    std::function<void()> openMenu_;
    QIcon icon_;
    QString title_;
};

} // namespace glimmerly
