#include "platform/qt/QtStatusItem.h"

#include "platform/qt/ExportedMenu.h"
#include "platform/qt/PanelColors.h"
#include "platform/qt/PictureIconEngine.h"

#include <QCursor>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFont>
#include <QMenu>
#include <QPainter>
#include <QSystemTrayIcon>

namespace glimmerly {

namespace {

const QString watcherService = "org.kde.StatusNotifierWatcher";

bool watcherRuns(const QDBusConnection& bus) {
    return bus.isConnected() && bus.interface()->isServiceRegistered(watcherService);
}

QImage drawnTitle(const QString& title, QSize pixels) {
    QImage picture(pixels, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QFont font;
    font.setBold(true);
    font.setPixelSize(pixels.height() * 4 / 5);
    painter.setFont(font);
    painter.drawText(picture.rect(), Qt::AlignCenter, title);
    return picture;
}

} // namespace

QtStatusItem::QtStatusItem() {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    watcher_.setConnection(bus);
    watcher_.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    watcher_.addWatchedService(watcherService);
    QObject::connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, &watcher_,
                     [this](const QString&, const QString&, const QString& newOwner) {
                         hostChanged(newOwner.isEmpty() ? Host::embedding : Host::statusNotifier);
                     });
    host_ = watcherRuns(bus) ? Host::statusNotifier : Host::embedding;
}

QtStatusItem::~QtStatusItem() = default;

void QtStatusItem::show() {
    shown_ = true;
    createTrayIcon();
}

void QtStatusItem::setMenu(QMenu& menu) {
    menu_ = &menu;
    menuDisappearance_.watch(menu);
    createTrayIcon();
}

void QtStatusItem::setTemplateImage(const QIcon& image, const QString& description) {
    image_ = image;
    description_ = description;
    createTrayIcon();
}

void QtStatusItem::setTitle(const QString& title) {
    const auto draw = [title](QSize pixels, qreal) { return drawnTitle(title, pixels); };
    setTemplateImage(QIcon(new PictureIconEngine(draw, paletteTextColor)), title);
}

void QtStatusItem::popUpMenu() {
    if (menu_)
        menu_->popup(QCursor::pos());
}

void QtStatusItem::whenMenuHasGone(std::function<void()> action) {
    menuDisappearance_.whenGone(std::move(action));
}

void QtStatusItem::hostChanged(Host host) {
    host_ = host;
    createTrayIcon();
}

/// Qt chooses between the two kinds of tray when the icon is made (6.4), so each change of host takes a new
/// one.
void QtStatusItem::createTrayIcon() {
    if (!shown_ || image_.isNull())
        return;
    trayIcon_.reset();
    exportedMenu_.reset();
    trayIcon_ = std::make_unique<QSystemTrayIcon>(tintedForHost());
    trayIcon_->setToolTip(description_);
    if (menu_ && host_ == Host::statusNotifier) {
        exportedMenu_ = std::make_unique<ExportedMenu>(*menu_);
        trayIcon_->setContextMenu(&exportedMenu_->menu());
    } else if (menu_) {
        trayIcon_->setContextMenu(menu_);
    }
    QObject::connect(trayIcon_.get(), &QSystemTrayIcon::activated, trayIcon_.get(),
                     [this](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger)
                             popUpMenu();
                     });
    trayIcon_->show();
}

QIcon QtStatusItem::tintedForHost() const {
    return tintedTemplate(image_, [this](QIcon::Mode) { return panelTextColor(); });
}

QColor QtStatusItem::panelTextColor() const {
    if (host_ == Host::statusNotifier || !trayIcon_)
        return hostPanelTextColor();
    const QRect place = trayIcon_->geometry();
    const QColor beside = place.isValid() ? screenColorAt(place.topLeft() - QPoint(1, 1)) : QColor();
    return beside.isValid() ? textColorOn(beside) : hostPanelTextColor();
}

} // namespace glimmerly
