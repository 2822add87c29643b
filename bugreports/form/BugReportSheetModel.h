#pragma once

#include "bugreports/BugReportClient.h"

#include <QObject>

#include <functional>
#include <optional>
#include <string>

namespace glimmerly {

/// What the form for bug reports holds and does. A report that is under way when the model goes is sent all
/// the same; its failure is only logged then. Main thread only.
class BugReportSheetModel : public QObject {
public:
    /// `dismiss` closes the form. It may destroy the model, on a later turn of the main loop at the earliest.
    BugReportSheetModel(BugReportSubmission& submission, std::function<void()> dismiss);

    // What was typed, UTF-8.
    [[nodiscard]] const std::string& title() const { return title_; }
    [[nodiscard]] const std::string& email() const { return email_; }
    [[nodiscard]] const std::string& description() const { return description_; }
    void setTitle(std::string title) { set(title_, std::move(title)); }
    void setEmail(std::string email) { set(email_, std::move(email)); }
    void setDescription(std::string description) { set(description_, std::move(description)); }

    [[nodiscard]] bool isReporting() const { return isReporting_; }
    /// Why the last report was not submitted.
    [[nodiscard]] const std::optional<std::string>& reportError() const { return reportError_; }
    /// Whether title and description hold more than white space.
    [[nodiscard]] bool canSubmit() const;

    /// Runs after each change of any of these.
    void setOnChange(std::function<void()> handler) { onChange_ = std::move(handler); }

    /// Sends what was typed. Does nothing else than forget the last failure when that cannot be submitted,
    /// and nothing at all while a report is under way.
    void report();
    void dismiss() { dismiss_(); }

private:
    void set(std::string& field, std::string text);
    void finished(const std::optional<std::string>& error);
    void changed();

    BugReportSubmission& submission_;
    std::function<void()> dismiss_;
    std::function<void()> onChange_;
    std::string title_;
    std::string email_;
    std::string description_;
    bool isReporting_ = false;
    std::optional<std::string> reportError_;
};

} // namespace glimmerly
