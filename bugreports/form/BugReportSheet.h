#pragma once

#include <QWidget>

namespace glimmerly {

class BugReportSheetModel;
class PlaceholderTextView;
class UiButton;
class UiLabel;
class UiSpinner;
class UiTextField;

/// Shows the model: what to type, what became of the last report, and the two answers. Escape is Cancel;
/// Return is Report, but in the description a new line.
class BugReportSheet : public QWidget {
public:
    /// `model` must outlive the view.
    explicit BugReportSheet(BugReportSheetModel& model, QWidget* parent = nullptr);

private:
    QWidget* makeHeader();
    QWidget* makeFields();
    QLayout* makeAnswers();
    void bindKeys();
    void renderReport();
    void render();

    BugReportSheetModel& model_;
    UiTextField* title_;
    UiTextField* email_;
    PlaceholderTextView* description_;
    UiLabel* error_;
    UiSpinner* spinner_;
    UiButton* cancel_;
    UiButton* report_;
};

} // namespace glimmerly
