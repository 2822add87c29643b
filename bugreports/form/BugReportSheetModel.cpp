#include "bugreports/form/BugReportSheetModel.h"

#include "base/Overloaded.h"
#include "base/Whitespace.h"
#include "diagnostics/GlimmerlyLog.h"

#include <QPointer>

#include <utility>

namespace glimmerly {

namespace {

/// Logs the failure, and says what to tell the user of it.
std::string messageFor(const BugReportFailure& failure) {
    return std::visit(Overloaded{
                          [](const BugReportAPIError& error) {
                              GlimmerlyLog::error(log_category::bugReport,
                                                  "Bug report submission returned documented API error", {},
                                                  makeError(error));
                              return error.message();
                          },
                          [](const Error& error) {
                              GlimmerlyLog::error(
                                  log_category::bugReport,
                                  "Bug report submission failed with unexpected transport/decoding path", {},
                                  error);
                              return BugReportAPIError(BugReportAPIError::UnexpectedResponse{}).message();
                          },
                      },
                      failure);
}

} // namespace

BugReportSheetModel::BugReportSheetModel(BugReportSubmission& submission, std::function<void()> dismiss)
    : submission_(submission), dismiss_(std::move(dismiss)) {}

bool BugReportSheetModel::canSubmit() const {
    return !trimmedWhitespace(title_).empty() && !trimmedWhitespace(description_).empty();
}

void BugReportSheetModel::report() {
    if (isReporting_)
        return;
    reportError_.reset();
    isReporting_ = canSubmit();
    changed();
    if (!isReporting_)
        return;
    submission_.submitBugReport(
        trimmedWhitespace(title_), trimmedWhitespace(email_), trimmedWhitespace(description_),
        [model = QPointer(this)](const auto& outcome) {
            const auto error = outcome ? std::nullopt : std::optional(messageFor(outcome.error()));
            if (model)
                model->finished(error);
        });
}

void BugReportSheetModel::finished(const std::optional<std::string>& error) {
    if (!error)
        dismiss();
    reportError_ = error;
    isReporting_ = false;
    changed();
}

void BugReportSheetModel::set(std::string& field, std::string text) {
    if (std::exchange(field, std::move(text)) != field)
        changed();
}

void BugReportSheetModel::changed() {
    if (onChange_)
        onChange_();
}

} // namespace glimmerly
