// The log of a run, line by line.
#include "tests/e2e/support/Session.h"
#include "tests/support/ScratchDirectory.h"

#include <csignal>
#include <regex>
#include <sstream>

namespace glimmerly::e2e {
namespace {

struct Line {
    std::string level;
    std::string category;
    std::string message;
    std::vector<std::string> keys; ///< of the metadata, beside "caller"

    bool operator==(const Line&) const = default;
};

void PrintTo(const Line& line, std::ostream* out) {
    *out << line.level << " " << line.category << " \"" << line.message << "\"";
    for (const auto& key : line.keys)
        *out << " " << key;
}

Line summary(const nlohmann::json& object) {
    Line line{object.value("level", ""), object.value("category", ""), object.value("message", ""), {}};
    for (const auto& [key, value] : object["metadata"].items()) {
        if (key != "caller")
            line.keys.push_back(key);
    }
    return line;
}

/// Compact, keys sorted, solidus escaped: an encoder of the test's own to compare each line with.
std::string encoded(const nlohmann::json& object) {
    return std::regex_replace(object.dump(), std::regex("/"), "\\/");
}

void expectExactForm(const std::string& text) {
    const auto object = nlohmann::json::parse(text, nullptr, false);
    ASSERT_TRUE(object.is_object()) << text;
    EXPECT_EQ(text, encoded(object));
    EXPECT_TRUE(
        std::regex_match(object.value("ts", ""), std::regex(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z)")))
        << text;
    EXPECT_TRUE(std::regex_match(object.value("threadName", ""), std::regex("main|worker|worker:.+")))
        << text;
    EXPECT_TRUE(std::regex_match(object["metadata"].value("caller", ""), std::regex(R"([A-Za-z]+\.cpp:\d+)")))
        << text;
}

TEST(LogFile, HoldsARunInOrder) {
    Session session;
    ASSERT_TRUE(session.openOverlay());
    session.robot.type({Key::escape});
    ASSERT_TRUE(session.waitForNoOverlay());
    ASSERT_TRUE(session.copySelection({10, 10}, {200, 100}));
    session.program.process().sendSignal(SIGTERM);
    EXPECT_EQ(session.program.process().waitForExit(patience), 0);

    std::vector<Line> expected = {
        {"notice", "AppLifecycle", "applicationWillFinishLaunching", {}},
        {"notice", "AppLifecycle", "applicationDidFinishLaunching", {}},
        {"debug", "Logging", "Structured log file path", {"path"}},
        {"info", "Updates", "This build has no updates", {"details"}},
        {"debug",
         "ScreenRecordingPermission",
         "Checking menu bar status windows for title access",
         {"windowCount"}},
        {"debug",
         "ScreenRecordingPermission",
         "No suitable non-owned menu bar windows; using CGPreflight fallback",
         {"preflight"}},
    };
    for (int press = 0; press < 2; ++press) {
        expected.push_back({"debug", "Hotkey", "Registered global screenshot hotkey pressed", {}});
        expected.push_back(
            {"debug", "ScreenshotWorkflow", "Capture succeeded; presenting overlay", {"path"}});
        expected.push_back({"notice", "Overlay", "Screenshot overlay presenting", {"capture"}});
    }
    expected.push_back({"notice", "AppLifecycle", "applicationWillTerminate", {}});

    const auto log = session.program.log();
    std::vector<Line> found;
    std::ranges::transform(log, std::back_inserter(found), summary);
    EXPECT_EQ(found, expected);

    const auto content = contentOf(session.program.logFile());
    EXPECT_TRUE(content.ends_with('\n'));
    std::istringstream lines(content);
    for (std::string line; std::getline(lines, line);)
        expectExactForm(line);

    EXPECT_EQ(log[2]["metadata"].value("path", ""), session.program.logFile());
    const std::regex captureName("glimmerly-capture-[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\.png");
    const std::string capture = log[7]["metadata"].value("path", "");
    EXPECT_TRUE(std::regex_match(capture, captureName)) << capture;
    EXPECT_EQ(log[8]["metadata"].value("capture", ""), capture);
    EXPECT_NE(log[10]["metadata"].value("path", ""), capture);
}

} // namespace
} // namespace glimmerly::e2e
