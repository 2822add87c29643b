#include "platform/qt/QtLocalEvents.h"

#include "platform/VirtualKeyCodes.h"

#include <QGuiApplication>
#include <QKeyEvent>

#include <array>
#include <chrono>

namespace glimmerly {

namespace {

constexpr std::chrono::minutes idleLimit{1};

bool isModifierKey(const QKeyEvent& press) {
    switch (press.key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Meta:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_CapsLock:
    case Qt::Key_Mode_switch:
        return true;
    case Qt::Key_Escape:
        return false; // also where a layout has put it on the place of Caps Lock
    default:
        // Qt (6.4) has no name for what some layouts make of them, such as the next group or level five.
        const auto code = virtualKeyCodeFromNativeScanCode(press.nativeScanCode());
        return code && *code >= virtual_key::firstModifier && *code <= virtual_key::lastModifier;
    }
}

struct ModifierFlag {
    Qt::KeyboardModifier modifier;
    std::uint64_t flag;
};
constexpr std::array modifierFlags{
    ModifierFlag{Qt::ControlModifier, event_modifier::control},
    ModifierFlag{Qt::AltModifier, event_modifier::option},
    ModifierFlag{Qt::ShiftModifier, event_modifier::shift},
    ModifierFlag{Qt::MetaModifier, event_modifier::command},
};

KeyDownEvent keyDownOf(const QKeyEvent& press) {
    KeyDownEvent event;
    for (const auto& [modifier, flag] : modifierFlags) {
        if (press.modifiers() & modifier)
            event.modifierFlags |= flag;
    }
    // Layouts can put Escape elsewhere, and alone it ends things by its meaning.
    if (press.key() == Qt::Key_Escape && event.modifierFlags == 0)
        event.keyCode = virtual_key::escape;
    else
        event.keyCode = virtualKeyCodeFromNativeScanCode(press.nativeScanCode());
    return event;
}

} // namespace

QtLocalEvents::QtLocalEvents() {
    idle_.setSingleShot(true);
    idle_.setInterval(idleLimit);
    connect(&idle_, &QTimer::timeout, this, [this] { holdKeyboard(nullptr); });
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](QWindow* window) {
        if (!monitors_.empty())
            holdKeyboard(window);
        else
            keptKey_.reset(); // its release may have gone elsewhere
    });
}

LocalEvents::Monitor QtLocalEvents::addLocalMonitorForEvents(EventTypeMask mask, Handler handler) {
    QCoreApplication::instance()->installEventFilter(this);
    monitors_.emplace(++lastMonitor_, Installed{mask, std::move(handler)});
    holdKeyboard(QGuiApplication::focusWindow());
    return lastMonitor_;
}

void QtLocalEvents::removeMonitor(Monitor monitor) {
    monitors_.erase(monitor);
    if (monitors_.empty())
        holdKeyboard(nullptr);
}

bool QtLocalEvents::eventFilter(QObject* receiver, QEvent* event) {
    // An event comes by once for the window and then for each widget it is offered to.
    return receiver->isWindowType() && isKept(*event);
}

bool QtLocalEvents::isKept(QEvent& event) {
    switch (event.type()) {
    case QEvent::ShortcutOverride: {
        const auto& press = static_cast<const QKeyEvent&>(event);
        if (monitors_.empty() && !isRepeatOfKept(press))
            return false;
        event.accept(); // no shortcut then acts on the press that follows
        return true;
    }
    case QEvent::KeyPress:
        return isKeptPress(static_cast<const QKeyEvent&>(event));
    case QEvent::KeyRelease: {
        const auto& release = static_cast<const QKeyEvent&>(event);
        if (keptKey_ && keptKey_->scanCode == release.nativeScanCode())
            keptKey_->releasedAt = release.timestamp();
        return false;
    }
    default:
        return false;
    }
}

bool QtLocalEvents::isKeptPress(const QKeyEvent& press) {
    if (monitors_.empty()) {
        if (isRepeatOfKept(press))
            return true;
        if (!isModifierKey(press))
            keptKey_.reset();
        return false;
    }
    if (isModifierKey(press))
        return true;
    holdKeyboard(QGuiApplication::focusWindow());
    if (!monitorsKeep(keyDownOf(press)))
        return false;
    keptKey_ = KeptKey{press.nativeScanCode()};
    return true;
}

bool QtLocalEvents::isRepeatOfKept(const QKeyEvent& press) const {
    if (!keptKey_ || keptKey_->scanCode != press.nativeScanCode())
        return false;
    // An X server makes up a release at the very moment of each repeat, and Qt 6.4 sees through that only
    // when it finds both together.
    return !keptKey_->releasedAt || *keptKey_->releasedAt == press.timestamp();
}

bool QtLocalEvents::monitorsKeep(const KeyDownEvent& event) const {
    std::optional<KeyDownEvent> passing = event;
    const auto monitors = monitors_; // a handler may remove any of them
    for (const auto& [id, monitor] : monitors) {
        if (passing && (monitor.mask & keyDownMask) != 0 && monitors_.contains(id))
            passing = monitor.handler(*passing);
    }
    return !passing;
}

void QtLocalEvents::holdKeyboard(QWindow* window) {
    if (window)
        idle_.start();
    else
        idle_.stop();
    if (holder_ == window)
        return;
    if (holder_)
        holder_->setKeyboardGrabEnabled(false);
    holder_ = window && window->setKeyboardGrabEnabled(true) ? window : nullptr;
}

} // namespace glimmerly
