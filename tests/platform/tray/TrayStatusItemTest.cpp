#include "platform/tray/TrayStatusItem.h"

#include "platform/qt/QtImages.h"
#include "tests/platform/tray/PanelProcess.h"
#include "tests/platform/tray/StatusNotifierHost.h"

#include <QAction>
#include <QGuiApplication>
#include <QMenu>
#include <QPixmap>
#include <QScreen>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace glimmerly {
namespace {

constexpr int patience = 10'000; // milliseconds

bool eventually(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, patience);
}

QImage screenImage(QRect area) {
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, area.x(), area.y(), area.width(), area.height())
        .toImage();
}

class TrayStatusItemTest : public testing::Test {
protected:
    TrayStatusItemTest() {
        menu.addAction("Version 1")->setEnabled(false);
        menu.addSeparator();
        screenshot = menu.addAction("Take _ & go");
        screenshot->setIcon(*images.templateSymbol("power", {}));
        screenshot->setShortcut(QKeySequence("Meta+Shift+A"));
        QObject::connect(screenshot, &QAction::triggered, [this] { ++triggered; });
    }
    void show() {
        item.show();
        item.setMenu(menu);
        item.setTemplateImage(*images.templateImage("MenuIcon"), "Glimmerly");
    }
    [[nodiscard]] bool embeddedEventually() {
        return eventually([this] { return embeddedAreas(client).size() == 1; });
    }

    QtImages images;
    QMenu menu;
    QAction* screenshot;
    int triggered = 0;
    TrayStatusItem item;
    XClient client{{}};
};

TEST_F(TrayStatusItemTest, PanelThatStartsLateOrAgainGetsTheItem) {
    show();
    StatusNotifierHost host;
    for (int start = 1; start <= 3; ++start) {
        host.start();
        EXPECT_TRUE(eventually([&] { return host.items.size() == 1; })) << "start " << start;
        EXPECT_TRUE(item.hasHost());
        EXPECT_EQ(host.property("Title").toString(), "Glimmerly");
        host.stop();
        EXPECT_TRUE(eventually([&] { return !item.hasHost(); }));
    }
}

TEST_F(TrayStatusItemTest, TrayOfTheServerThatStartsLateOrAgainGetsTheItem) {
    show();
    EXPECT_TRUE(embeddedAreas(client).empty());
    EXPECT_FALSE(item.hasHost());
    for (int start = 1; start <= 3; ++start) {
        const PanelProcess panel;
        EXPECT_TRUE(embeddedEventually()) << "start " << start;
        EXPECT_TRUE(item.hasHost());
    }
}

TEST_F(TrayStatusItemTest, MovesBetweenTheTwoKindsOfTrayAndIsInOneOnly) {
    const PanelProcess panel;
    show();
    ASSERT_TRUE(embeddedEventually());

    StatusNotifierHost host;
    host.hosted = false; // a watcher alone shows nothing
    host.start();
    EXPECT_TRUE(eventually([&] { return host.questions == 1; }));
    EXPECT_TRUE(host.items.isEmpty());
    EXPECT_EQ(embeddedAreas(client).size(), 1u);
    host.stop();

    host.hosted = true;
    host.start();
    EXPECT_TRUE(eventually([&] { return host.items.size() == 1 && embeddedAreas(client).empty(); }));
    host.stop();
    EXPECT_TRUE(embeddedEventually());
}

TEST_F(TrayStatusItemTest, PanelOnTheBusDrawsTheMenuAndUsesIt) {
    StatusNotifierHost host;
    host.start();
    show();
    ASSERT_TRUE(eventually([&] { return host.items.size() == 1; }));
    EXPECT_TRUE(host.property("ItemIsMenu").toBool());
    const auto pixmaps = qdbus_cast<TrayPixmaps>(host.property("IconPixmap"));
    ASSERT_FALSE(pixmaps.isEmpty());
    EXPECT_EQ(pixmaps.front().pixels.size(), 16 * 16 * 4);

    const auto items = host.menu().children;
    ASSERT_EQ(items.size(), 3);
    EXPECT_EQ(items[0].properties.value("label").toString(), "Version 1");
    EXPECT_FALSE(items[0].properties.value("enabled", true).toBool());
    EXPECT_EQ(items[1].properties.value("type").toString(), "separator");
    EXPECT_EQ(items[2].properties.value("label").toString(), "Take __ _ go");
    EXPECT_FALSE(QImage::fromData(items[2].properties.value("icon-data").toByteArray()).isNull());
    EXPECT_EQ(qdbus_cast<QList<QStringList>>(items[2].properties.value("shortcut")),
              (QList<QStringList>{{"Super", "Shift", "A"}}));

    screenshot->setShortcut({});
    EXPECT_FALSE(host.menu().children[2].properties.contains("shortcut"));
    host.click(items[2].id);
    host.click(99);
    EXPECT_TRUE(eventually([&] { return triggered == 1; }));
}

TEST_F(TrayStatusItemTest, EmbeddedPictureContrastsWithThePanel) {
    const std::pair<const char*, bool> cases[] = {{"#000000", true}, {"#f0f0f0", false}};
    for (const auto& [background, lightPicture] : cases) {
        TrayStatusItem other;
        const PanelProcess panel(background);
        other.show();
        other.setMenu(menu);
        other.setTemplateImage(*images.templateImage("MenuIcon"), "Glimmerly");
        ASSERT_TRUE(embeddedEventually()) << background << ": " << embeddedAreas(client).size();
        EXPECT_TRUE(eventually([&] {
            const QImage picture = screenImage(embeddedAreas(client).at(0));
            int darkest = 255;
            int lightest = 0;
            for (int y = 0; y < picture.height(); ++y) {
                for (int x = 0; x < picture.width(); ++x) {
                    darkest = std::min(darkest, qGray(picture.pixel(x, y)));
                    lightest = std::max(lightest, qGray(picture.pixel(x, y)));
                }
            }
            const bool ground = qGray(picture.pixel(0, 0)) < 128;
            return ground == lightPicture && lightest - darkest > 180;
        })) << background;
    }
}

} // namespace
} // namespace glimmerly
