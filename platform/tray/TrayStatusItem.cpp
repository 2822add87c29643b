#include "platform/tray/TrayStatusItem.h"

#include "platform/qt/PictureIconEngine.h"
#include "platform/tray/MenuExporter.h"
#include "platform/tray/PanelColors.h"
#include "platform/tray/StatusNotifierItem.h"

#include <QCoreApplication>
#include <QCursor>
#include <QFont>
#include <QMenu>
#include <QPainter>
#include <QSystemTrayIcon>

#include <chrono>

namespace glimmerly {

namespace {

const QString menuPath = "/StatusMenu";
constexpr std::chrono::milliseconds panelPaintingTime(500);

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

TrayStatusItem::TrayStatusItem() : watch_(bus_, [this](Host host) { hostChanged(host); }) {
    drawnBeforePanel_.setSingleShot(true);
    drawnBeforePanel_.setInterval(panelPaintingTime);
    drawnBeforePanel_.callOnTimeout([this] {
        if (embeddedIcon_ && embeddedColor() != drawnColor_)
            drawEmbedded();
    });
}

TrayStatusItem::~TrayStatusItem() = default;

void TrayStatusItem::show() {
    shown_ = true;
    update();
}

void TrayStatusItem::setMenu(QMenu& menu) {
    menu_ = &menu;
    menuDisappearance_.watch(menu);
    update();
}

void TrayStatusItem::setTemplateImage(const QIcon& image, const QString& description) {
    image_ = image;
    description_ = description;
    update();
}

void TrayStatusItem::setTitle(const QString& title) {
    const auto draw = [title](QSize pixels, qreal) { return drawnTitle(title, pixels); };
    setTemplateImage(QIcon(new PictureIconEngine(draw, paletteTextColor)), title);
}

bool TrayStatusItem::hasHost() const {
    return busItem_ || (embeddedIcon_ && QSystemTrayIcon::isSystemTrayAvailable());
}

void TrayStatusItem::popUpMenu(const QPoint& place) {
    if (menu_)
        menu_->popup(place);
}

void TrayStatusItem::whenMenuHasGone(std::function<void()> action) {
    menuDisappearance_.whenGone(std::move(action));
}

void TrayStatusItem::hostChanged(Host host) {
    busHost_ = host;
    busItem_.reset(); // a new host has to hear of a new item
    update();
}

/// Brings what is on the screen in line with the host, the picture and the menu.
void TrayStatusItem::update() {
    if (!shown_ || !menu_ || image_.isNull() || !busHost_)
        return;
    if (busHost_ == Host::present)
        showOnBus();
    else
        showEmbedded();
}

void TrayStatusItem::showOnBus() {
    embeddedIcon_.reset();
    if (!busItem_) {
        exportedMenu_.reset();
        exportedMenu_ = std::make_unique<MenuExporter>(bus_, menuPath, *menu_);
        busItem_ = std::make_unique<StatusNotifierItem>(bus_, QCoreApplication::applicationName(), menuPath,
                                                        [this] { popUpMenu(QCursor::pos()); });
        watch_.registerItem();
    }
    busItem_->setIcon(tintedTemplate(image_, [](QIcon::Mode) { return hostPanelTextColor(); }), description_);
}

/// Qt (6.4) decides once in a process, when the first of these icons is made, whether they go to the bus. No
/// host was there then, so that it is always the X server's tray. Qt itself waits for that one to start.
void TrayStatusItem::showEmbedded() {
    busItem_.reset();
    exportedMenu_.reset();
    if (!embeddedIcon_) {
        embeddedIcon_ = std::make_unique<QSystemTrayIcon>();
        embeddedIcon_->setContextMenu(menu_);
        QObject::connect(embeddedIcon_.get(), &QSystemTrayIcon::activated, embeddedIcon_.get(),
                         [this](QSystemTrayIcon::ActivationReason reason) {
                             if (reason == QSystemTrayIcon::Trigger)
                                 popUpMenu(QCursor::pos());
                         });
    }
    drawEmbedded();
    embeddedIcon_->setToolTip(description_);
    embeddedIcon_->show();
}

/// Each time it is drawn, in a colour that is seen on what is there then. A panel that starts may embed the
/// item first and paint itself afterwards, which nobody tells.
void TrayStatusItem::drawEmbedded() {
    embeddedIcon_->setIcon(tintedTemplate(image_, [this](QIcon::Mode) {
        drawnColor_ = embeddedColor();
        drawnBeforePanel_.start();
        return drawnColor_;
    }));
}

QColor TrayStatusItem::embeddedColor() const {
    const QRect place = embeddedIcon_ ? embeddedIcon_->geometry() : QRect();
    // The picture leaves its corner free. A pixel beside it may be of something else: not every panel has a
    // margin.
    const QColor behind = place.isValid() ? screenColorAt(place.topLeft()) : QColor();
    return behind.isValid() ? textColorOn(behind) : hostPanelTextColor();
}

} // namespace glimmerly
