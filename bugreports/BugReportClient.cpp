#include "bugreports/BugReportClient.h"

#include "base/Whitespace.h"
#include "bugreports/BugReportMessages.h"
#include "diagnostics/GlimmerlyLog.h"
#include "platform/HttpClient.h"
#include "platform/MainQueue.h"
#include "platform/Platform.h"
#include "platform/http/endpoint/ServiceEndpoint.h"

#include <utility>

namespace glimmerly {

namespace {

using Outcome = std::expected<std::string, BugReportFailure>;
using ApiError = BugReportAPIError;

Outcome failed(BugReportFailure why) {
    return std::unexpected(std::move(why));
}

std::expected<HttpRequest, BugReportFailure> makeRequest(std::string_view baseURL,
                                                         const BugReportRequestBody& report) {
    auto url = serviceEndpoint(baseURL, "api/submit-bug-report");
    if (!url && url.error() == ServiceEndpointError::notConfigured)
        return std::unexpected(ApiError(ApiError::MissingAPIConfiguration{}));
    if (!url)
        return std::unexpected(ApiError(ApiError::InvalidBaseURL{}));
    auto body = encode(report);
    if (!body)
        return std::unexpected(std::move(body).error());
    return HttpRequest{.url = std::move(*url), .contentType = "application/json", .body = std::move(*body)};
}

Outcome accepted(const std::string& body) {
    auto response = decodeBugReportSuccess(body);
    if (!response) {
        GlimmerlyLog::error(log_category::bugReport,
                            "Unexpected JSON decoding error for HTTP 2xx submit-bug-report payload", {},
                            response.error());
        return failed(ApiError(ApiError::DecodingFailed{}));
    }
    if (!response->ok)
        return failed(ApiError(ApiError::DecodingFailed{}));
    return std::move(response->bugReportID);
}

Outcome outcomeOf(const Result<HttpResponse>& answer) {
    if (!answer)
        return failed(answer.error());
    if (!answer->status)
        return failed(ApiError(ApiError::UnexpectedResponse{}));
    if (*answer->status >= 200 && *answer->status <= 299)
        return accepted(answer->body);
    return failed(ApiError(ApiError::HttpError{*answer->status, decodeBugReportErrorCode(answer->body)}));
}

} // namespace

BugReportClient& BugReportClient::shared() {
    static auto* const client = new BugReportClient(Platform::current().bundle.serviceBaseURL,
                                                    Platform::current().http, Platform::current().mainQueue);
    return *client;
}

BugReportClient::BugReportClient(std::string serviceBaseURL, HttpClient& http, MainQueue& mainQueue)
    : serviceBaseURL_(std::move(serviceBaseURL)), http_(http), mainQueue_(mainQueue) {}

void BugReportClient::submitBugReport(std::string_view title, std::string_view email,
                                      std::string_view description, Completion completion) {
    const auto finish = [&queue = mainQueue_, completion = std::move(completion)](Outcome outcome) {
        queue.post([completion, outcome = std::move(outcome)] { completion(outcome); });
    };
    auto request = makeRequest(serviceBaseURL_,
                               {std::string(trimmedWhitespace(title)), std::string(trimmedWhitespace(email)),
                                std::string(trimmedWhitespace(description))});
    if (!request)
        return finish(failed(std::move(request).error()));
    http_.send(std::move(*request), [finish](const auto& answer) { finish(outcomeOf(answer)); });
}

} // namespace glimmerly
