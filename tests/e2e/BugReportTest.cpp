// A bug report, from the tray menu to the service.
#include "tests/e2e/support/ServedSession.h"
#include "tests/e2e/support/Tray.h"

#include <gmock/gmock.h>

namespace glimmerly::e2e {
namespace {

using testing::ElementsAre;

/// The program of a build whose service answers in that way, with the form open.
struct BugReport : ServedSession {
    explicit BugReport(const std::string& answer) : ServedSession(answer, {.panel = Panel::tint2}) {
        chooseFromTray(session, {Key::down, Key::down});
        EXPECT_TRUE(waitUntil([this] {
            return client.windowProperty(client.root(), "_NET_ACTIVE_WINDOW") ==
                   client.managedWindows().back();
        })) << "no settings";
        type({Key::down});                // from General to About
        type({Key::leftShift, Key::tab}); // to the last of its links
        about = window();
        type({Key::space});
    }

    [[nodiscard]] std::optional<Bitmap> window() const {
        return client.pixels(client.areaOf(client.managedWindows().back()));
    }
    /// Presses the keys, and waits until they are seen to have done something.
    void type(const std::vector<Key>& keys) const {
        const auto before = window();
        session.robot.type(keys);
        EXPECT_TRUE(waitUntil([&] { return window() != before; }));
    }
    /// Fills in the form and chooses Report.
    void send() const {
        session.robot.typeText(" Crash/1 \n");
        session.robot.type({Key::tab});
        session.robot.typeText("a.b");
        session.robot.type({Key::tab});
        session.robot.typeText("one\ntwo ");
        session.robot.type({Key::tab}); // where Return no longer breaks the line
        session.robot.type({Key::returnKey});
    }
    [[nodiscard]] bool waitForClosedForm() const {
        return waitUntil([this] { return window() == about; });
    }
    /// The bodies of the reports that have arrived.
    [[nodiscard]] std::vector<std::string> reports() const {
        std::vector<std::string> found;
        for (const auto& request : service.requests()) {
            if (request["path"].toString().endsWith("/api/submit-bug-report"))
                found.push_back(request["text"].toString().toStdString());
        }
        return found;
    }
    static constexpr auto report = R"({"description":"one\ntwo","email":"a.b","title":"Crash\/1"})";
    const XClient& client = session.desktop.client();
    std::optional<Bitmap> about; ///< the window without the form
};

TEST(BugReports, AreTypedSentAndTheFormCloses) {
    const BugReport run("right");
    run.send();
    EXPECT_TRUE(run.waitForClosedForm());
    EXPECT_THAT(run.reports(), ElementsAre(run.report));
    const auto isOfReports = [](const auto& line) { return line.value("category", "") == "BugReport"; };
    EXPECT_TRUE(std::ranges::none_of(run.session.program.log(), isOfReports));
}

} // namespace
} // namespace glimmerly::e2e
