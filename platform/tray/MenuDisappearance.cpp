#include "platform/tray/MenuDisappearance.h"

#include <QCursor>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QMenu>
#include <QPixmap>
#include <QScreen>
#include <QTimer>

#include <utility>

namespace glimmerly {

namespace {

constexpr int lookInterval = 10; // milliseconds
/// A fade changes at every frame, so stillness is longer than two frames of 60 Hz.
constexpr int stillAfter = 40;
/// A host may draw its menu a little longer than it takes to tell us of the click.
constexpr int stillAfterForHost = 100;
constexpr int bound = 400;
constexpr int hostMenuReach = 160; // points around the pointer

QImage sight(QRect area) {
    QScreen* screen = QGuiApplication::screenAt(area.center());
    if (!screen)
        return {};
    area.translate(-screen->geometry().topLeft());
    return screen->grabWindow(0, area.x(), area.y(), area.width(), area.height()).toImage();
}

QRect aroundPointer() {
    QRect area(0, 0, 2 * hostMenuReach, 2 * hostMenuReach);
    area.moveCenter(QCursor::pos());
    const QScreen* screen = QGuiApplication::screenAt(area.center());
    return screen ? area.intersected(screen->geometry()) : area;
}

} // namespace

/// Looks at one area again and again until nothing moves there any more. Destroys itself when done.
class MenuDisappearance::Wait : public QObject {
public:
    /// `menu` is what the menu looked like, where that is known.
    Wait(QObject& parent, QRect area, std::optional<QImage> menu, std::function<void()> action)
        : QObject(&parent), area_(area), menu_(std::move(menu)), action_(std::move(action)) {
        total_.start();
        still_.start();
        timer_.setTimerType(Qt::PreciseTimer);
        connect(&timer_, &QTimer::timeout, this, &Wait::look);
        timer_.start(lookInterval);
    }

private:
    void look() {
        QImage now = sight(area_);
        if (now.isNull() || total_.hasExpired(bound))
            return finish();
        if (now != last_) {
            last_ = std::move(now);
            still_.restart();
            return;
        }
        const bool changed = !menu_ || *menu_ != last_;
        if (changed && still_.hasExpired(menu_ ? stillAfter : stillAfterForHost))
            finish();
    }
    void finish() {
        timer_.stop();
        deleteLater();
        action_();
    }

    QRect area_;
    std::optional<QImage> menu_;
    std::function<void()> action_;
    QImage last_;
    QElapsedTimer total_;
    QElapsedTimer still_;
    QTimer timer_;
};

void MenuDisappearance::watch(QMenu& menu) {
    QObject::connect(&menu, &QMenu::aboutToHide, &context_, [this, &menu] {
        lastHidden_ = Sight{menu.geometry(), sight(menu.geometry())};
        // Only an item chosen by this hiding uses it, and that follows at once.
        QMetaObject::invokeMethod(&context_, [this] { lastHidden_.reset(); }, Qt::QueuedConnection);
    });
}

void MenuDisappearance::whenGone(std::function<void()> action) {
    const auto hidden = std::exchange(lastHidden_, std::nullopt);
    if (hidden)
        new Wait(context_, hidden->area, hidden->picture, std::move(action));
    else
        new Wait(context_, aroundPointer(), std::nullopt, std::move(action));
}

} // namespace glimmerly
