#include "telemetry/TelemetrySink.h"

#include "tests/support/FakeHttpClient.h"
#include "tests/support/LogCapture.h"
#include "tests/support/desktop/WaitUntil.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

#include <cmath>

namespace glimmerly {
namespace {

using namespace std::chrono_literals;

class TelemetrySinkTest : public testing::Test {
protected:
    void configure(std::string baseURL) {
        sink.emplace(TelemetrySinkServices{
            .http = http,
            .bundle = {.shortVersion = "1.4.2",
                       .identifier = "app.glimmerly.Glimmerly",
                       .serviceBaseURL = std::move(baseURL)},
            .system = {.osVersion = "Debian GNU/Linux 12", .architecture = "x86_64", .machineID = "machine"},
            .clock = [this] { return now; }});
    }
    void SetUp() override { configure(" https://service.example\n"); }
    void track(int count) {
        for (int i = 0; i < count; ++i)
            sink->track("event", {{"index", i}});
    }
    /// The body of a request, as a parser of somebody else reads it.
    [[nodiscard]] QJsonObject body(std::size_t index) const {
        return QJsonDocument::fromJson(QByteArray::fromStdString(http.requests().at(index).body)).object();
    }
    [[nodiscard]] QJsonArray eventsOf(std::size_t index) const { return body(index)["events"].toArray(); }
    [[nodiscard]] auto requestCount() const { return http.requests().size(); }

    LogCapture log;
    FakeHttpClient http;
    WallTime now{std::chrono::milliseconds(1'700'000'000'250)};
    std::optional<TelemetrySink> sink;
};

TEST_F(TelemetrySinkTest, ABatchIsThatJson) {
    sink->track("capture_failed", {{"error_domain", "a/ü\""},
                                   {"", 1},
                                   {"ratio", 1.5},
                                   {"not_a_number", std::nan("")},
                                   {"count", 3},
                                   {"is_new", true}});
    now += 250ms;
    sink->track("app_launch");
    sink->flushSynchronously();
    ASSERT_EQ(requestCount(), 1u);
    const HttpRequest request = http.requests()[0];
    EXPECT_EQ(request.url, "https://service.example/api/telemetry");
    EXPECT_EQ(request.contentType, "application/json");
    EXPECT_EQ(request.timeout, 60s);
    EXPECT_NE(request.body.find(R"("error_domain":"a\/ü\"")"), std::string::npos) << request.body;

    auto sent = body(0);
    const auto isUuid = [](const QJsonValue& value) {
        const QString text = value.toString();
        return text.size() == 36 && text == text.toUpper() && text.count('-') == 4;
    };
    EXPECT_TRUE(isUuid(sent.take("batch_id")));
    auto ids = sent.take("ids").toObject();
    EXPECT_TRUE(isUuid(ids.take("session_id")));
    EXPECT_EQ(ids, (QJsonObject{{"machine_id", "machine"}}));
    const QJsonObject properties{
        {"error_domain", "a/ü\""}, {"ratio", 1.5}, {"not_a_number", "nan"}, {"count", 3}, {"is_new", true}};
    const QJsonObject first{
        {"seq", 0}, {"name", "capture_failed"}, {"ts", 1'700'000'000.25}, {"props", properties}};
    const QJsonObject second{
        {"seq", 1}, {"name", "app_launch"}, {"ts", 1'700'000'000.5}, {"props", QJsonObject()}};
    const QJsonObject expected{{"schema_version", 1},
                               {"sent_at", 1'700'000'000.5},
                               {"app", QJsonObject{{"name", "Glimmerly"}, {"version", "Version 1.4.2"}}},
                               {"client", QJsonObject{{"os", "macOS"},
                                                      {"os_version", "Debian GNU/Linux 12"},
                                                      {"bundle_id", "app.glimmerly.Glimmerly"},
                                                      {"architecture", "x86_64"}}},
                               {"events", QJsonArray{first, second}}};
    EXPECT_EQ(sent, expected) << QJsonDocument(sent).toJson().toStdString() << "instead of "
                              << QJsonDocument(expected).toJson().toStdString();
}

TEST_F(TelemetrySinkTest, TheFiftiethEventSendsAtOnceAndTheNextWaitTwoSeconds) {
    const auto start = std::chrono::steady_clock::now();
    track(51);
    ASSERT_TRUE(waitUntil([this] { return requestCount() == 1; }));
    ASSERT_TRUE(waitUntil([this] { return requestCount() == 2; }));
    EXPECT_GE(std::chrono::steady_clock::now() - start, 2s);
    const auto first = eventsOf(0);
    ASSERT_EQ(first.size(), 50);
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(first[i]["seq"], i);
        EXPECT_EQ(first[i]["props"]["index"], i);
    }
    ASSERT_EQ(eventsOf(1).size(), 1);
    EXPECT_EQ(eventsOf(1).at(0)["seq"], 0);
    EXPECT_NE(body(0)["batch_id"], body(1)["batch_id"]);
    EXPECT_EQ(body(0)["ids"], body(1)["ids"]);
    sink->flushSynchronously();
    EXPECT_EQ(requestCount(), 2u) << "with nothing pending there is nothing to send";
}

TEST_F(TelemetrySinkTest, WithoutAServiceNothingHappens) {
    for (const char* nowhere : {"", " \n\t\u2028"}) {
        configure(nowhere);
        track(60);
        sink->flushSynchronously();
    }
    EXPECT_EQ(requestCount(), 0u);
    EXPECT_TRUE(log.records().empty());
}

TEST_F(TelemetrySinkTest, TheLastFlushWaitsForTheAnswerAndNoLonger) {
    http.answer.reset();
    track(1);
    const auto start = std::chrono::steady_clock::now();
    sink->flushSynchronously();
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_GE(waited, 1500ms);
    EXPECT_LT(waited, 5s);
}

TEST_F(TelemetrySinkTest, EachFailureIsLoggedOnceAndTheBatchDropped) {
    std::string longBody;
    for (int i = 0; i < 600; ++i)
        longBody += "e\u0301";
    const auto lineAfter = [this](Result<HttpResponse> answer) {
        http.answer = std::move(answer);
        const auto before = log.records().size();
        track(1);
        sink->flushSynchronously();
        const auto records = log.records();
        EXPECT_EQ(records.size(), before + 1);
        EXPECT_EQ(records.back().level, GlimmerlyLog::Level::warning);
        EXPECT_EQ(records.back().category, "Telemetry");
        return records.back();
    };
    const auto failed = lineAfter(failure(Error("libcurl", 7, "Nobody there")));
    EXPECT_EQ(failed.message, "Telemetry upload failed");
    EXPECT_EQ(failed.errorSummary, "Nobody there");
    EXPECT_EQ(lineAfter(HttpResponse{}).message, "Telemetry upload returned a non-HTTP response");
    const auto rejected = lineAfter(HttpResponse{500, longBody});
    EXPECT_EQ(rejected.message, "Telemetry upload rejected");
    EXPECT_EQ(rejected.metadata->at("status"), "500");
    EXPECT_EQ(rejected.metadata->at("body"), longBody.substr(0, 1500)) << "500 of what a person sees";
    for (const char* unreadable : {"", "\xff"})
        EXPECT_FALSE(lineAfter(HttpResponse{300, unreadable}).metadata->contains("body"));
    EXPECT_EQ(requestCount(), 5u) << "nothing is sent again";

    sink->track("\xff");
    sink->flushSynchronously();
    EXPECT_EQ(log.records().back().message, "Telemetry payload was not valid JSON");
    configure("https://[nowhere");
    EXPECT_EQ(lineAfter({}).message, "Telemetry API URL is invalid");
    EXPECT_EQ(requestCount(), 5u);
}

} // namespace
} // namespace glimmerly
