#include "bugreports/BugReportAPIError.h"

#include "base/Overloaded.h"

#include <algorithm>
#include <string_view>

namespace glimmerly {

namespace {

constexpr std::string_view outdated =
    "The bug report could not be submitted from this version of the app. Please update and try again.";
constexpr std::string_view tooLong = "The description is too long. Shorten it and try again.";

struct CodeMessage {
    std::string_view code;
    std::string_view message;
};

constexpr CodeMessage codeMessages[] = {
    {"title_required", "Enter a short title for the bug report."},
    {"title_too_long", "The title is too long. Keep it under 300 characters."},
    {"email_required", outdated},
    {"invalid_content_type", outdated},
    {"invalid_json", outdated},
    {"description_required", "Describe what happened before submitting the bug report."},
    {"description_too_long", tooLong},
    {"body_too_large", tooLong},
    {"internal_error", "The bug report service had a problem. Please try again in a few minutes."},
};

std::string_view messageFor(const BugReportAPIError::HttpError& error) {
    const auto* known = std::ranges::find_if(
        codeMessages, [&](const CodeMessage& entry) { return error.errorCode == entry.code; });
    if (known != std::end(codeMessages))
        return known->message;
    if (error.status >= 500 && error.status <= 599)
        return "The bug report service is temporarily unavailable. Please try again later.";
    return "We could not submit your bug report. Check your details and try again.";
}

} // namespace

std::string BugReportAPIError::message() const {
    using E = BugReportAPIError;
    const auto text = std::visit(
        Overloaded{
            [](const E::HttpError& error) { return messageFor(error); },
            [](const E::MissingAPIConfiguration&) -> std::string_view {
                return "Bug report submission is not configured in this build.";
            },
            [](const E::InvalidBaseURL&) -> std::string_view {
                return "Bug report submission is not configured correctly.";
            },
            [](const E::UnexpectedResponse&) -> std::string_view {
                return "We could not submit your bug report. Check your connection and try again.";
            },
            [](const E::DecodingFailed&) -> std::string_view {
                return "The bug report service sent an unexpected response. Please try again later.";
            },
        },
        case_);
    return std::string(text);
}

Error makeError(const BugReportAPIError& error) {
    return {"Glimmerly.BugReportAPIError", static_cast<int>(error.asCase().index()), error.message()};
}

} // namespace glimmerly
