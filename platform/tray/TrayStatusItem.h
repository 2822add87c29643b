#pragma once

#include "platform/StatusBar.h"
#include "platform/tray/MenuDisappearance.h"
#include "platform/tray/StatusNotifierWatch.h"

#include <QDBusConnection>
#include <QIcon>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <memory>
#include <optional>

class QSystemTrayIcon;

namespace glimmerly {

class MenuExporter;
class StatusNotifierItem;

/// The status item as a StatusNotifierItem on the session bus where something shows such items, otherwise as
/// a window in the X server's tray. Both appear as soon as there is a host, and again when it was restarted.
class TrayStatusItem : public StatusItem {
public:
    TrayStatusItem();
    ~TrayStatusItem() override;

    void show() override;
    void setMenu(QMenu& menu) override;
    void setTemplateImage(const QIcon& image, const QString& description) override;
    void setTitle(const QString& title) override;
    [[nodiscard]] bool hasHost() const override;
    void popUpMenu(const QPoint& place) override;
    void whenMenuHasGone(std::function<void()> action) override;

private:
    using Host = StatusNotifierWatch::Host;

    void hostChanged(Host host);
    void update();
    void showOnBus();
    void showEmbedded();
    void drawEmbedded();
    [[nodiscard]] QColor embeddedColor() const;

    QDBusConnection bus_ = QDBusConnection::sessionBus();
    StatusNotifierWatch watch_;
    std::optional<Host> busHost_; // none: not known yet
    bool shown_ = false;
    QIcon image_;
    QString description_;
    QPointer<QMenu> menu_;
    MenuDisappearance menuDisappearance_;
    std::unique_ptr<MenuExporter> exportedMenu_;
    std::unique_ptr<StatusNotifierItem> busItem_;
    std::unique_ptr<QSystemTrayIcon> embeddedIcon_;
    QColor drawnColor_; // of the embedded picture
    QTimer drawnBeforePanel_;
};

} // namespace glimmerly
