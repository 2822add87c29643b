#pragma once

#include "bugreports/BugReportClient.h"

#include <utility>
#include <vector>

namespace glimmerly {

/// Keeps the reports; the test answers the last one.
class FakeBugReports : public BugReportSubmission {
public:
    struct Report {
        std::string title;
        std::string email;
        std::string description;

        bool operator==(const Report&) const = default;
    };

    void submitBugReport(std::string_view title, std::string_view email, std::string_view description,
                         Completion completion) override {
        reports.push_back({std::string(title), std::string(email), std::string(description)});
        waiting_ = std::move(completion);
    }
    void answer(const std::expected<std::string, BugReportFailure>& outcome) {
        std::exchange(waiting_, nullptr)(outcome);
    }

    std::vector<Report> reports;

private:
    Completion waiting_;
};

} // namespace glimmerly
