#include "platform/desktop/Desktop.h"

#include "platform/Platform.h"
#include "platform/desktop/DesktopScreenRecording.h"
#include "platform/desktop/Relaunch.h"
#include "platform/desktop/SingleInstance.h"
#include "platform/desktop/TerminationSignals.h"
#include "platform/desktop/WithoutHotkeys.h"
#include "platform/http/CurlHttpClient.h"
#include "platform/http/endpoint/ServiceEndpoint.h"
#include "platform/linux/updates/dialogs/LinuxUpdateFramework.h"
#include "platform/portal/PortalAppearance.h"
#include "platform/qt/QtAlerts.h"
#include "platform/qt/QtApplication.h"
#include "platform/qt/QtImages.h"
#include "platform/qt/QtLinkOpener.h"
#include "platform/qt/QtLocalEvents.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/qt/QtPasteboard.h"
#include "platform/qt/QtPreferences.h"
#include "platform/qt/QtSavePanel.h"
#include "platform/shortcuts/DesktopShortcuts.h"
#include "platform/tray/TrayStatusItem.h"
#include "platform/x11/X11HotkeyService.h"
#include "platform/x11/X11KeyboardLayout.h"
#include "platform/x11/X11OverlayWindows.h"
#include "platform/x11/X11ScreenCapture.h"
#include "platform/x11/X11Screens.h"
#include "platform/x11/X11WindowManager.h"
#include "platform/x11/X11Workspace.h"

namespace glimmerly {

/// What talks to the X server beside Qt.
struct Desktop::XServer {
    /// Needs Qt's application.
    [[nodiscard]] static Result<XServer> open();

    std::unique_ptr<X11Connection> forScreens;
    std::unique_ptr<X11Connection> forScreenCapture;
    std::unique_ptr<X11Connection> forWorkspace;
    std::unique_ptr<X11Connection> forOverlayWindows;
    std::unique_ptr<X11Connection> forWindowManager;
    std::unique_ptr<HotkeyService> hotkeys;
    std::unique_ptr<KeyboardLayout> keyboardLayout;
};

Result<Desktop::XServer> Desktop::XServer::open() {
    XServer server;
    for (auto* connection : {&server.forScreens, &server.forScreenCapture, &server.forWorkspace,
                             &server.forOverlayWindows, &server.forWindowManager}) {
        auto opened = X11Connection::open();
        if (!opened)
            return failure(opened.error());
        *connection = std::move(*opened);
    }
    Result<std::unique_ptr<HotkeyService>> hotkeys = X11HotkeyService::open();
    server.hotkeys = hotkeys ? std::move(*hotkeys) : std::make_unique<NoHotkeyService>();
    Result<std::unique_ptr<KeyboardLayout>> keyboardLayout = X11KeyboardLayout::open();
    server.keyboardLayout =
        keyboardLayout ? std::move(*keyboardLayout) : std::make_unique<NoKeyboardLayout>();
    return server;
}

struct Desktop::Services {
    Services(QtApplication& app, XServer& server, const BundleInfo& bundle, TrialStart& start)
        : screens(std::move(server.forScreens)),
          screenCapture(std::move(server.forScreenCapture), screens, mainQueue),
          screenRecording(bundle.identifier.value_or("")),
          workspace(std::move(server.forWorkspace), bundle.identifier),
          overlayWindows(std::move(server.forOverlayWindows)), hotkeys(std::move(server.hotkeys)),
          keyboardLayout(std::move(server.keyboardLayout)), windowManager(std::move(server.forWindowManager)),
          signals([&app] { app.terminate(); }), platform{.bundle = bundle,
                                                         .notifications = notifications,
                                                         .application = app,
                                                         .mainQueue = mainQueue,
                                                         .preferences = preferences,
                                                         .screens = screens,
                                                         .screenCapture = screenCapture,
                                                         .screenRecording = screenRecording,
                                                         .workspace = workspace,
                                                         .overlayWindows = overlayWindows,
                                                         .pasteboard = pasteboard,
                                                         .savePanel = savePanel,
                                                         .alerts = alerts,
                                                         .links = links,
                                                         .appearance = appearance,
                                                         .images = images,
                                                         .hotkeys = *hotkeys,
                                                         .keyboardLayout = *keyboardLayout,
                                                         .localEvents = localEvents,
                                                         .symbolicHotKeys = symbolicHotKeys,
                                                         .statusItem = statusItem,
                                                         .http = *http,
                                                         .updates = updates},
          updates(platform.bundle, start, app, mainQueue, preferences) {}

    NotificationCenter notifications;
    QtMainQueue mainQueue;
    QtPreferences preferences{preferencesFile()};
    QtPasteboard pasteboard;
    QtSavePanel savePanel;
    QtAlerts alerts;
    QtLinkOpener links;
    PortalAppearance appearance{QDBusConnection::sessionBus()};
    QtImages images;
    TrayStatusItem statusItem;
    QtLocalEvents localEvents;
    X11Screens screens;
    X11ScreenCapture screenCapture;
    DesktopScreenRecording screenRecording;
    X11Workspace workspace;
    X11OverlayWindows overlayWindows;
    std::unique_ptr<HotkeyService> hotkeys;
    std::unique_ptr<KeyboardLayout> keyboardLayout;
    X11WindowManager windowManager;
    DesktopShortcuts symbolicHotKeys{*keyboardLayout, [this] {
                                         return RunningWindowManager{
                                             windowManager.name(), windowManager.openboxConfigurationFile()};
                                     }};
    TerminationSignals signals;
    // Never destroyed: services that are not either may call it until the process has ended.
    CurlHttpClient* http = new CurlHttpClient;
    Platform platform;
    LinuxUpdateFramework updates;
};

Result<std::unique_ptr<Desktop>> Desktop::open(char* program, const BundleInfo& bundle, TrialStart& start) {
    // Without a server Qt would abort the process. Kept until Qt has connected: some servers start anew, and
    // refuse connections meanwhile, once the last one has ended.
    const auto connection = X11Connection::open();
    if (!connection)
        return failure(connection.error());
    // What runs at exit does so in reverse order, and the last events are sent from there.
    if (isServiceConfigured(bundle.serviceBaseURL))
        CurlHttpClient::prepare();
    auto application = std::make_unique<QtApplication>(program, bundle);
    auto server = XServer::open();
    if (!server)
        return failure(server.error());
    return std::unique_ptr<Desktop>(new Desktop(std::move(application), *server, bundle, start));
}

Desktop::Desktop(std::unique_ptr<QtApplication> application, XServer& server, const BundleInfo& bundle,
                 TrialStart& start)
    : application_(std::move(application)),
      services_(std::make_unique<Services>(*application_, server, bundle, start)) {
    Platform::setCurrent(services_->platform);
}

Desktop::~Desktop() = default;

void Desktop::followStarts(SingleInstance* instance) {
    if (instance)
        instance->onHandOver([this] { application_->reopen(); });
    relaunch_ = std::make_unique<Relaunch>(instance);
    application_->setRelaunch(
        [this](const auto& program, auto completion) { relaunch_->start(program, std::move(completion)); });
    application_->setNewInstance(
        [this](auto completion) { services_->updates.openNewInstance(std::move(completion)); });
}

int Desktop::run(ApplicationDelegate& delegate) {
    return application_->run(delegate);
}

} // namespace glimmerly
