#pragma once

#include "base/NotificationCenter.h"
#include "platform/Application.h"

#include <QPointer>

#include <functional>
#include <memory>
#include <string_view>

class QAction;
class QMenu;

namespace glimmerly {

class HotkeySettings;
class Images;
class KeyboardLayout;
class StatusItem;
class Telemetry;

/// What the controller uses of the desktop and of the other services.
struct StatusItemServices {
    BundleInfo bundle;
    StatusItem& statusItem;
    const Images& images;
    NotificationCenter& notifications;
    const HotkeySettings& hotkeySettings;
    KeyboardLayout& keyboardLayout;
    Application& application;
    Telemetry& telemetry;
    std::function<void()> requestScreenshot;
    std::function<void()> showSettings;
    std::function<void()> checkForUpdates;
};

/// Puts the program's icon into the status area and gives it the menu that is its only permanent user
/// interface. Main thread only.
class StatusItemController {
public:
    explicit StatusItemController(StatusItemServices services);
    ~StatusItemController();
    StatusItemController(const StatusItemController&) = delete;
    StatusItemController& operator=(const StatusItemController&) = delete;

    [[nodiscard]] static StatusItemController& shared();

    /// Called once, at launch.
    void installStatusItem();
    /// Built on first use; only the key equivalent of "Take screenshot" changes afterwards.
    [[nodiscard]] QMenu& menu();

private:
    void buildMenu();
    QAction& addItem(const char* title, std::string_view symbol, void (StatusItemController::*action)());
    void setItemImage();
    void globalHotkeyDidChange();

    void takeScreenshot();
    void openSettings();
    void checkForUpdates();
    void quit();

    StatusItemServices services_;
    std::unique_ptr<QMenu> menu_;
    QPointer<QAction> screenshotMenuItem_;
    Observation hotkeyObservation_;
    Observation layoutObservation_;
    Observation overlayObservation_;
};

} // namespace glimmerly
