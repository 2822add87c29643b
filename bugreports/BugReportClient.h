#pragma once

#include "bugreports/BugReportAPIError.h"

#include <expected>
#include <functional>
#include <string>
#include <string_view>
#include <variant>

namespace glimmerly {

class HttpClient;
class MainQueue;

/// Why a report was not submitted: what the service's interface foresees, or an error of the way there.
using BugReportFailure = std::variant<BugReportAPIError, Error>;

/// Sends bug reports. The form works with this interface.
class BugReportSubmission {
public:
    /// The stored report's identifier. Called once, on the main queue, never within `submitBugReport`; never
    /// when the program ends before.
    using Completion = std::function<void(std::expected<std::string, BugReportFailure>)>;

    virtual ~BugReportSubmission() = default;

    /// The texts are sent without the white space and line breaks around them; `email` may be empty.
    virtual void submitBugReport(std::string_view title, std::string_view email, std::string_view description,
                                 Completion completion) = 0;
};

/// Sends them to the program's service. Main thread only.
class BugReportClient final : public BugReportSubmission {
public:
    BugReportClient(std::string serviceBaseURL, HttpClient& http, MainQueue& mainQueue);

    [[nodiscard]] static BugReportClient& shared();

    void submitBugReport(std::string_view title, std::string_view email, std::string_view description,
                         Completion completion) override;

private:
    std::string serviceBaseURL_;
    HttpClient& http_;
    MainQueue& mainQueue_;
};

} // namespace glimmerly
