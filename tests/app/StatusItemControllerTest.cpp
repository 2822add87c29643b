#include "app/StatusItemController.h"

#include "hotkeys/HotkeySettings.h"
#include "platform/OverlayWindows.h"
#include "tests/support/FakeDesktop.h"

#include <QAction>
#include <QMenu>
#include <QTest>
#include <QWidget>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace glimmerly {
namespace {

using testing::ElementsAre;
using testing::Pair;

constexpr Modifiers commandShift = Modifiers::command | Modifiers::shift;
constexpr KeyCode keyA{0};
constexpr KeyCode keyQ{12};
constexpr KeyCode keyF5{96};

class StatusItemControllerTest : public testing::Test, protected FakeDesktop {
protected:
    StatusItemController& install(BundleInfo bundle = {.name = "Glimmerly", .shortVersion = "1.2"}) {
        controller.emplace(StatusItemServices{.bundle = std::move(bundle),
                                              .statusItem = statusItem,
                                              .images = images,
                                              .notifications = notifications,
                                              .hotkeySettings = settings,
                                              .keyboardLayout = keyboardLayout,
                                              .application = application,
                                              .telemetry = telemetry,
                                              .requestScreenshot = [this] { ++requests; },
                                              .showSettings = [this] { ++settingsShown; },
                                              .checkForUpdates = [this] { ++checks; }});
        controller->installStatusItem();
        return *controller;
    }
    [[nodiscard]] QAction& item(int index) { return *controller->menu().actions().at(index); }
    [[nodiscard]] std::string shownShortcut() {
        return item(2).shortcut().toString(QKeySequence::PortableText).toStdString();
    }

    HotkeySettings settings{preferences, notifications};
    int requests = 0;
    int settingsShown = 0;
    int checks = 0;
    std::optional<StatusItemController> controller;
};

TEST_F(StatusItemControllerTest, MenuIsTheTableOfItems) {
    images.symbols = {{"viewfinder.rectangular", 16}, {"gearshape", 16}, {"power", 16}};
    install();

    std::vector<std::pair<std::string, bool>> titles;
    for (const QAction* action : controller->menu().actions())
        titles.emplace_back(action->isSeparator() ? "-" : action->text().toStdString(), action->isEnabled());
    EXPECT_THAT(titles,
                ElementsAre(Pair("Version 1.2", false), Pair("-", true), Pair("Take screenshot", true),
                            Pair("-", true), Pair("Settings\u2026", true),
                            Pair("Check for updates\u2026", true), Pair("-", true), Pair("Quit", true)));
    EXPECT_FALSE(item(2).icon().isNull());
    EXPECT_TRUE(item(5).icon().isNull()) << "a symbol that cannot be made leaves the item without picture";
    EXPECT_EQ(images.requests.at("power").pointSize, 13);
    EXPECT_EQ(images.requests.at("power").weight, SymbolWeight::regular);
    EXPECT_EQ(statusItem.menu, &controller->menu());
    for (const int other : {0, 4, 5, 7})
        EXPECT_TRUE(item(other).shortcut().isEmpty());
}

TEST_F(StatusItemControllerTest, VersionLineTakesTheFirstVersionThatSaysSomething) {
    const std::pair<BundleInfo, const char*> cases[] = {
        {{.shortVersion = "3.1", .version = "42"}, "Version 3.1"},
        {{.shortVersion = "", .version = "42"}, "Version 42"},
        {{.version = "42"}, "Version 42"},
        {{.version = ""}, "Version unknown"},
    };
    for (const auto& [bundle, expected] : cases) {
        install(bundle);
        EXPECT_EQ(item(0).text().toStdString(), expected);
    }
}

TEST_F(StatusItemControllerTest, KeyEquivalentFollowsTheHotkey) {
    install();
    const QMenu* menu = &controller->menu();
    EXPECT_EQ(shownShortcut(), "Meta+Shift+A");

    settings.setKeyCombination(std::nullopt);
    EXPECT_EQ(shownShortcut(), "");
    settings.setKeyCombination(KeyCombination{keyQ, Modifiers::control | Modifiers::option});
    EXPECT_EQ(shownShortcut(), "Ctrl+Alt+Q");
    settings.setKeyCombination(KeyCombination{keyF5, commandShift});
    EXPECT_EQ(shownShortcut(), "") << "a key that prints nothing has no key equivalent";
    settings.setKeyCombination(KeyCombination{keyA, commandShift});
    EXPECT_EQ(shownShortcut(), "Meta+Shift+A");
    EXPECT_EQ(&controller->menu(), menu);
}

TEST_F(StatusItemControllerTest, KeyEquivalentFollowsTheKeyboardLayout) {
    install();
    keyboardLayout.change({{0, "q"}});
    EXPECT_EQ(shownShortcut(), "Meta+Shift+Q");
    keyboardLayout.change({{0, "\r"}});
    EXPECT_EQ(shownShortcut(), "Meta+Shift+Return");
    controller.reset();
    keyboardLayout.change({{0, "z"}}); // reaches no one
}

TEST_F(StatusItemControllerTest, ShownShortcutIsNoShortcutOfOurOwnWindows) {
    install();
    QWidget window;
    window.show();
    window.activateWindow();
    QTest::keyClick(&window, Qt::Key_A, Qt::MetaModifier | Qt::ShiftModifier);
    statusItem.menuHasGone();
    EXPECT_EQ(requests, 0);
}

TEST_F(StatusItemControllerTest, PictureFallsBackStepByStep) {
    const auto shownSize = [this] {
        statusItem.image = {};
        install();
        return statusItem.image.actualSize({64, 64}).width();
    };
    images.images = {{"MenuIcon", 22}};
    images.symbols = {{"hare.fill", 18}};
    images.icons = {{"icon", 48}};
    EXPECT_EQ(shownSize(), 22);
    EXPECT_FALSE(images.requests.contains("hare.fill"));
    EXPECT_EQ(statusItem.description, "Glimmerly");

    images.images.clear();
    EXPECT_EQ(shownSize(), 18);
    EXPECT_EQ(images.requests.at("hare.fill").pointSize, 14);
    EXPECT_EQ(images.requests.at("hare.fill").weight, SymbolWeight::medium);

    images.symbols.clear();
    EXPECT_EQ(shownSize(), 48);

    images.icons.clear();
    for (const auto& [name, title] :
         {std::pair("Étude", "É"), std::pair("", "G"), std::pair("🐇 Hare", "🐇")}) {
        install({.name = name});
        EXPECT_EQ(statusItem.title.toStdString(), title);
    }
}

TEST_F(StatusItemControllerTest, AnOpenMenuGivesWayToAnOverlay) {
    QMenu& menu = install().menu();
    menu.popup({});
    ASSERT_TRUE(menu.isVisible());
    notifications.post(OverlayWindows::willShowNotification);
    EXPECT_FALSE(menu.isVisible());
}

TEST_F(StatusItemControllerTest, EachItemIsCountedAndLoggedAndDoesItsOne) {
    LogCapture log;
    install();
    const struct {
        int index;
        const char* event;
        const char* line; ///< in the log; empty for none
        GlimmerlyLog::Level level;
        const int& done;
    } cases[] = {
        {4, "status_menu_open_settings", "", {}, settingsShown},
        {5, "status_menu_check_for_updates", "Check for updates chosen from menu", GlimmerlyLog::Level::debug,
         checks},
        {7, "status_menu_quit", "Quit chosen from menu", GlimmerlyLog::Level::notice,
         application.terminations},
    };
    for (const auto& [index, event, line, level, done] : cases) {
        item(index).trigger();
        EXPECT_EQ(done, 1) << event;
        EXPECT_EQ(std::exchange(telemetry.events, {}), (std::vector<FakeTelemetry::Event>{{event, {}}}));
        if (*line == '\0')
            continue;
        EXPECT_EQ(log.records().back().level, level);
        EXPECT_EQ(log.records().back().category, "StatusMenu");
        EXPECT_EQ(log.records().back().message, line);
    }
    EXPECT_EQ(log.records().size(), 2u);
}

} // namespace
} // namespace glimmerly
