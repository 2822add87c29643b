#include "hotkeys/GlobalHotkeyController.h"

#include "diagnostics/GlimmerlyLog.h"
#include "hotkeys/HotkeySettings.h"
#include "platform/MainQueue.h"
#include "platform/Platform.h"

#include <string>

namespace glimmerly {

namespace {

void logFailure(std::string_view message, HotkeyStatus status,
                GlimmerlyLog::Place place = GlimmerlyLog::Place::current()) {
    GlimmerlyLog::error(log_category::hotkey, message, {{"osstatus", std::to_string(status)}}, {}, place);
}

void logRegistrationFailure(HotkeyStatus status) {
    logFailure("RegisterEventHotKey failed", status);
}

} // namespace

GlobalHotkeyController& GlobalHotkeyController::shared() {
    static GlobalHotkeyController& instance = *new GlobalHotkeyController(
        Platform::current().hotkeys, HotkeySettings::shared(), Platform::current().mainQueue);
    return instance;
}

GlobalHotkeyController::GlobalHotkeyController(HotkeyService& service, HotkeySettings& settings,
                                               MainQueue& mainQueue)
    : service_(service), settings_(settings), mainQueue_(mainQueue),
      self_(std::make_shared<GlobalHotkeyController*>(this)) {
    settings_.setRegistrationRefresh([this] { refresh(); });
    service_.onLoss([](HotkeyStatus status) { logRegistrationFailure(status); });
}

GlobalHotkeyController::~GlobalHotkeyController() {
    settings_.setRegistrationRefresh({});
    service_.onLoss({});
    shutdown();
}

void GlobalHotkeyController::start(std::function<void()> requestScreenshot) {
    requestScreenshot_ = std::move(requestScreenshot);
    if (!eventHandlerRef_) {
        const auto answer =
            service_.installHandler([weakSelf = std::weak_ptr(self_)](const HotkeyEvent* event) {
                const auto self = weakSelf.lock();
                return handleEvent(event, self ? *self : nullptr);
            });
        if (answer.status != hotkey_status::success) {
            logFailure("InstallEventHandler failed", answer.status);
            return;
        }
        eventHandlerRef_ = answer.ref;
    }
    reregister();
}

void GlobalHotkeyController::refresh() {
    postToSelf(&GlobalHotkeyController::reregister);
}

void GlobalHotkeyController::setSuspendedForRecording(Suspension suspension) {
    suspendedForRecording_ = suspension;
    postToSelf(&GlobalHotkeyController::reregister);
}

void GlobalHotkeyController::unregister() {
    if (!hotKeyRef_)
        return;
    const HotkeyStatus status = service_.unregisterHotkey(*hotKeyRef_);
    hotKeyRef_.reset();
    if (status != hotkey_status::success)
        logFailure("UnregisterEventHotKey failed", status);
}

void GlobalHotkeyController::shutdown() {
    unregister();
    if (eventHandlerRef_)
        service_.removeHandler(*eventHandlerRef_);
    eventHandlerRef_.reset();
}

HotkeyStatus GlobalHotkeyController::handleEvent(const HotkeyEvent* event,
                                                 GlobalHotkeyController* controller) {
    if (!event || !controller)
        return hotkey_status::eventNotHandled;
    const auto identifier = event->identifier();
    if (!identifier)
        return identifier.error();
    if (*identifier != registrationID || event->kind() != hotkeyPressedEventKind)
        return hotkey_status::eventNotHandled;
    controller->postToSelf(&GlobalHotkeyController::hotkeyPressed);
    return hotkey_status::success;
}

void GlobalHotkeyController::reregister() {
    unregister();
    if (!eventHandlerRef_ || suspendedForRecording_ == Suspension::on)
        return;
    if (const HotkeyStatus status = registerCurrent(); status != hotkey_status::success)
        logRegistrationFailure(status);
}

HotkeyStatus GlobalHotkeyController::registerCurrent() {
    const auto& combination = settings_.keyCombination();
    if (!combination)
        return hotkey_status::parameterError;
    const auto answer = service_.registerHotkey(static_cast<std::uint32_t>(combination->key.rawValue),
                                                combination->modifiers.carbonFlags(), registrationID);
    if (answer.status != hotkey_status::success)
        return answer.status;
    if (answer.ref == 0)
        return hotkey_status::parameterError;
    hotKeyRef_ = answer.ref;
    return hotkey_status::success;
}

void GlobalHotkeyController::hotkeyPressed() {
    GlimmerlyLog::debug(log_category::hotkey, "Registered global screenshot hotkey pressed");
    if (requestScreenshot_)
        requestScreenshot_();
}

void GlobalHotkeyController::postToSelf(void (GlobalHotkeyController::*task)()) {
    mainQueue_.post([weakSelf = std::weak_ptr(self_), task] {
        if (const auto self = weakSelf.lock())
            ((*self)->*task)();
    });
}

} // namespace glimmerly
