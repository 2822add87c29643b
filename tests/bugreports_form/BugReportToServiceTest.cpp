// The form with the real client and a real service.
#include "bugreports/form/BugReportSheet.h"
#include "bugreports/form/BugReportSheetModel.h"
#include "platform/http/CurlHttpClient.h"
#include "platform/qt/QtMainQueue.h"
#include "tests/support/LoopbackService.h"
#include "ui/UiSheet.h"

#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace glimmerly {
namespace {

TEST(BugReportToService, WhatIsTypedArrivesAndTheFormCloses) {
    LoopbackService service;
    CurlHttpClient http;
    QtMainQueue mainQueue;
    const auto report = [&](const std::string& behaviour) {
        BugReportClient client(service.url(behaviour), http, mainQueue);
        bool dismissed = false;
        BugReportSheetModel model(client, [&dismissed] { dismissed = true; });
        QWidget window;
        window.show();
        QApplication::setActiveWindow(&window);
        const UiSheet sheet(window, new BugReportSheet(model));
        QTest::keyClicks(window.focusWidget(), " Crash ");
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        QTest::keyClicks(window.focusWidget(), "name@example.com");
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        QTest::keyClicks(window.focusWidget(), "one");
        QTest::keyClick(window.focusWidget(), Qt::Key_Return);
        QTest::keyClicks(window.focusWidget(), "two");
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab); // Cancel
        QTest::keyClick(window.focusWidget(), Qt::Key_Return);
        EXPECT_TRUE(QTest::qWaitFor([&] { return dismissed || model.reportError(); }, 10'000));
        return model.reportError();
    };
    EXPECT_EQ(report("right"), std::nullopt);
    EXPECT_EQ(report("status-503"),
              "The bug report service is temporarily unavailable. Please try again later.");
    ASSERT_EQ(service.requests().size(), 2u);
    const auto sent = service.requests().front();
    EXPECT_EQ(sent["path"].toString(), "/right/api/submit-bug-report");
    EXPECT_EQ(sent["json"].toObject(),
              QJsonObject({{"title", "Crash"}, {"email", "name@example.com"}, {"description", "one\ntwo"}}));
    http.stop();
}

} // namespace
} // namespace glimmerly
