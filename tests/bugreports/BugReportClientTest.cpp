#include "bugreports/BugReportClient.h"

#include "platform/http/CurlHttpClient.h"
#include "tests/support/FakeHttpClient.h"
#include "tests/support/FakeMainQueue.h"
#include "tests/support/LogCapture.h"
#include "tests/support/LoopbackService.h"

#include <gtest/gtest.h>

#include <future>

namespace glimmerly {
namespace {

using ApiError = BugReportAPIError;

constexpr auto outdated =
    "The bug report could not be submitted from this version of the app. Please update and try again.";
constexpr auto tooLong = "The description is too long. Shorten it and try again.";
constexpr auto busy = "The bug report service is temporarily unavailable. Please try again later.";
constexpr auto details = "We could not submit your bug report. Check your details and try again.";
constexpr auto unexpected = "The bug report service sent an unexpected response. Please try again later.";
constexpr auto undecodable = "Unexpected JSON decoding error for HTTP 2xx submit-bug-report payload";

class BugReportClientTest : public testing::Test {
protected:
    using Outcome = std::expected<std::string, BugReportFailure>;

    Outcome submit(const std::string& baseURL = "https://service.example/v1/") {
        BugReportClient client(baseURL, http, queue);
        std::optional<Outcome> outcome;
        client.submitBugReport(" \n\u2028Title/\tü\r\n", "\t ", "  It broke. \n",
                               [&](const Outcome& result) { outcome = result; });
        EXPECT_FALSE(outcome) << "told later, on the main queue";
        queue.runAll();
        return outcome.value();
    }
    Outcome submitAnswered(Result<HttpResponse> answer) {
        http.answer = std::move(answer);
        return submit();
    }
    static ApiError apiError(const Outcome& outcome) { return std::get<ApiError>(outcome.error()); }

    LogCapture log;
    FakeHttpClient http;
    FakeMainQueue queue;
};

TEST_F(BugReportClientTest, SendsTheTrimmedReportAndReturnsItsIdentifier) {
    EXPECT_EQ(submitAnswered(HttpResponse{201, R"({"bug_report_id":"r-7","ok":true,"more":[]})"}), "r-7");
    const HttpRequest request = http.requests().at(0);
    EXPECT_EQ(request.url, "https://service.example/v1/api/submit-bug-report");
    EXPECT_EQ(request.contentType, "application/json");
    EXPECT_NE(request.body.find(R"("Title\/\t)"), std::string::npos) << request.body;
    EXPECT_EQ(QJsonDocument::fromJson(QByteArray::fromStdString(request.body)).object(),
              (QJsonObject{{"title", "Title/\tü"}, {"email", ""}, {"description", "It broke."}}));
    EXPECT_TRUE(log.records().empty());
}

TEST_F(BugReportClientTest, EachCodeOfTheServiceHasItsMessage) {
    const struct {
        int status;
        const char* code; ///< nullptr: the answer is no envelope
        const char* message;
    } cases[] = {
        {400, "title_required", "Enter a short title for the bug report."},
        {400, "title_too_long", "The title is too long. Keep it under 300 characters."},
        {422, "email_required", outdated},
        {415, "invalid_content_type", outdated},
        {400, "invalid_json", outdated},
        {400, "description_required", "Describe what happened before submitting the bug report."},
        {400, "description_too_long", tooLong},
        {413, "body_too_large", tooLong},
        {500, "internal_error", "The bug report service had a problem. Please try again in a few minutes."},
        {503, "Title_Required", busy},
        {599, nullptr, busy},
        {600, nullptr, details},
        {404, nullptr, details},
        {307, nullptr, details},
    };
    for (const auto& [status, code, message] : cases) {
        const std::string body =
            code ? R"({"error":")" + std::string(code) + R"(","message":"not shown"})" : "<html></html>";
        const auto error = apiError(submitAnswered(HttpResponse{status, body}));
        EXPECT_EQ(error.message(), message);
        const auto expected = code ? std::optional<std::string>(code) : std::nullopt;
        EXPECT_EQ(error, ApiError(ApiError::HttpError{status, expected}));
    }
    EXPECT_EQ(apiError(submitAnswered(HttpResponse{400, R"({"error":"title_required"})"})).message(), details)
        << "an envelope has both fields";
    EXPECT_TRUE(log.records().empty());
}

TEST_F(BugReportClientTest, AnAcceptedReportWithoutItsFieldsIsAnError) {
    EXPECT_EQ(apiError(submitAnswered(HttpResponse{200, R"({"ok":false,"bug_report_id":"x"})"})).message(),
              unexpected);
    EXPECT_TRUE(log.records().empty());
    for (const std::string& body :
         {std::string(), std::string("null"), std::string("[]"), std::string("\xff"),
          std::string(R"({"ok":true})"), std::string(R"({"ok":1,"bug_report_id":"x"})"),
          std::string(R"({"ok":true,)"), '"' + std::string(100'000, 'x')})
        EXPECT_EQ(apiError(submitAnswered(HttpResponse{200, body})).message(), unexpected) << body;
    const auto lines = log.withMessage(undecodable);
    ASSERT_EQ(lines.size(), 8u);
    EXPECT_LT(lines[7].errorSummary.value().size(), 1000u) << "the log is not what the answer makes of it";
    EXPECT_EQ(lines[0].level, GlimmerlyLog::Level::error);
    EXPECT_EQ(lines[0].category, "BugReport");
    EXPECT_TRUE(lines[0].errorSummary);
}

TEST_F(BugReportClientTest, WhatCannotBeAskedSaysWhy) {
    EXPECT_EQ(apiError(submit(" \n")).message(), "Bug report submission is not configured in this build.");
    const auto invalid = apiError(submit("https://"));
    EXPECT_EQ(invalid.message(), "Bug report submission is not configured correctly.");
    EXPECT_EQ(makeError(invalid).code(), 2);
    EXPECT_TRUE(http.requests().empty());
    EXPECT_EQ(apiError(submitAnswered(HttpResponse{})).message(),
              "We could not submit your bug report. Check your connection and try again.");
    const auto outcome = submitAnswered(failure(Error("libcurl", 7, "Nobody there")));
    EXPECT_EQ(std::get<Error>(outcome.error()).code(), 7);
}

TEST_F(BugReportClientTest, AgainstARealServiceEachMisbehaviourEndsInAnOutcome) {
    const LoopbackService service;
    CurlHttpClient realHttp;
    // The last element of what the failure holds, or the identifier.
    const auto outcomeOf = [&](const char* behaviour) -> std::string {
        std::promise<Outcome> promise;
        struct DirectQueue : MainQueue {
            void post(std::function<void()> task) override { task(); }
        } direct;
        BugReportClient client(service.url(behaviour), realHttp, direct);
        client.submitBugReport("t", "", "d", [&](const Outcome& result) { promise.set_value(result); });
        const Outcome outcome = promise.get_future().get();
        if (outcome)
            return *outcome;
        const auto* documented = std::get_if<ApiError>(&outcome.error());
        return documented ? documented->message() : std::get<Error>(outcome.error()).domain();
    };
    const std::pair<const char*, const char*> cases[] = {
        {"right", "report-1"},
        {"late", "report-1"},
        {"half", "libcurl"},
        {"garbage", "We could not submit your bug report. Check your connection and try again."},
        {"status-503", busy},
        {"status-422-email-required", outdated},
        {"status-200", unexpected},
        {"big-200", unexpected},
        {"big-404", details},
        {"elsewhere-1", details},
    };
    for (const auto& [behaviour, expected] : cases)
        EXPECT_EQ(outcomeOf(behaviour), expected) << behaviour;
    EXPECT_EQ(service.requests().at(0)["json"].toObject(),
              (QJsonObject{{"title", "t"}, {"email", ""}, {"description", "d"}}));
}

} // namespace
} // namespace glimmerly
