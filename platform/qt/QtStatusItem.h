#pragma once

#include "platform/StatusBar.h"
#include "platform/qt/MenuDisappearance.h"

#include <QDBusServiceWatcher>
#include <QIcon>
#include <QPointer>
#include <QString>

#include <memory>

class QSystemTrayIcon;

namespace glimmerly {

class ExportedMenu;

/// The status item as a tray icon: a StatusNotifierItem on the session bus where something watches for such
/// items, otherwise a window embedded in the X server's system tray.
class QtStatusItem : public StatusItem {
public:
    QtStatusItem();
    ~QtStatusItem() override;

    void show() override;
    void setMenu(QMenu& menu) override;
    void setTemplateImage(const QIcon& image, const QString& description) override;
    void setTitle(const QString& title) override;
    void popUpMenu() override;
    void whenMenuHasGone(std::function<void()> action) override;

private:
    enum class Host { statusNotifier, embedding };

    void hostChanged(Host host);
    void createTrayIcon();
    [[nodiscard]] QIcon tintedForHost() const;
    [[nodiscard]] QColor panelTextColor() const;

    QDBusServiceWatcher watcher_;
    Host host_ = Host::embedding;
    QIcon image_;
    QString description_;
    QPointer<QMenu> menu_;
    MenuDisappearance menuDisappearance_;
    std::unique_ptr<ExportedMenu> exportedMenu_;
    bool shown_ = false;
    std::unique_ptr<QSystemTrayIcon> trayIcon_; // none until shown with a picture
};

} // namespace glimmerly
