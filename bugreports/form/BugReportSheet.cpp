#include "bugreports/form/BugReportSheet.h"

#include "bugreports/form/BugReportSheetModel.h"
#include "bugreports/form/BugReportSheetText.h"
#include "bugreports/form/PlaceholderTextView.h"
#include "ui/QtConversions.h"
#include "ui/UiButton.h"
#include "ui/UiColors.h"
#include "ui/UiLayout.h"
#include "ui/UiSpinner.h"
#include "ui/UiStyle.h"
#include "ui/UiText.h"
#include "ui/UiTextField.h"
#include "ui/UiTextFrame.h"

#include <QAccessible>
#include <QShortcut>

namespace glimmerly {

namespace {

constexpr int sheetWidth = 520;
constexpr int padding = 24;
constexpr int groupSpacing = 18;
constexpr int headingSpacing = 6;
constexpr int fieldSpacing = 12;
constexpr int labelSpacing = 6;
constexpr int requiredSpacing = 6;
constexpr int answerSpacing = 8;
constexpr int descriptionHeight = 140; // at least

enum class Need { optional, required };

/// A label row over an input, which takes its names from there.
QLayout* makeField(const char* label, Need need, QWidget& input, QWidget& field) {
    auto* labels = tightLayout<QHBoxLayout>(nullptr, requiredSpacing);
    auto* name = new UiLabel(toQString(label), text_style::bodyMedium);
    name->setWordWrap(false);
    labels->addWidget(name, 0, Qt::AlignTop);
    field.setAccessibleName(name->text());
    if (need == Need::required) {
        auto* required = new UiLabel(toQString(bug_report_text::required), text_style::captionSecondary);
        required->setWordWrap(false);
        const int toBaseline = name->fontMetrics().ascent() - required->fontMetrics().ascent();
        required->setContentsMargins(0, toBaseline, 0, 0);
        labels->addWidget(required, 0, Qt::AlignTop);
        field.setAccessibleDescription(required->text());
    }
    labels->addStretch();
    auto* column = tightLayout<QVBoxLayout>(nullptr, labelSpacing);
    column->addLayout(labels);
    column->addWidget(&input, 1);
    return column;
}

} // namespace

BugReportSheet::BugReportSheet(BugReportSheetModel& model, QWidget* parent)
    : QWidget(parent), model_(model), title_(new UiTextField), email_(new UiTextField),
      description_(new PlaceholderTextView(toQString(bug_report_text::descriptionPlaceholder))),
      error_(new UiLabel(QString(), text_style::calloutError)),
      spinner_(new UiSpinner(toQString(bug_report_text::reporting))),
      cancel_(new UiButton(toQString(bug_report_text::cancel), {})),
      report_(new UiButton(toQString(bug_report_text::report), {.kind = ButtonKind::prominent})) {
    setAccessibleName(toQString(bug_report_text::heading));
    setFixedWidth(sheetWidth);
    auto* column = tightLayout<QVBoxLayout>(this, groupSpacing);
    column->setContentsMargins(padding, padding, padding, padding);
    column->addWidget(makeHeader());
    column->addWidget(makeFields(), 1);
    column->addWidget(error_);
    column->addLayout(makeAnswers());
    bindKeys();
    model_.setOnChange([this] { render(); });
    render();
}

QWidget* BugReportSheet::makeHeader() {
    auto* header = new QWidget;
    auto* column = tightLayout<QVBoxLayout>(header, headingSpacing);
    column->addWidget(new UiLabel(toQString(bug_report_text::heading), text_style::title2));
    column->addWidget(new UiLabel(toQString(bug_report_text::purpose), text_style::calloutSecondary));
    return header;
}

QWidget* BugReportSheet::makeFields() {
    title_->setPlaceholderText(toQString(bug_report_text::titlePlaceholder));
    email_->setPlaceholderText(toQString(bug_report_text::emailPlaceholder));
    email_->setInputMethodHints(Qt::ImhEmailCharactersOnly);
    connect(title_, &QLineEdit::textChanged, this,
            [this](const QString& typed) { model_.setTitle(typed.toStdString()); });
    connect(email_, &QLineEdit::textChanged, this,
            [this](const QString& typed) { model_.setEmail(typed.toStdString()); });
    connect(description_, &QPlainTextEdit::textChanged, this,
            [this] { model_.setDescription(description_->toPlainText().toStdString()); });

    auto* fields = new QWidget;
    auto* column = tightLayout<QVBoxLayout>(fields, fieldSpacing);
    column->addLayout(makeField(bug_report_text::title, Need::required, *title_, *title_));
    column->addLayout(makeField(bug_report_text::email, Need::optional, *email_, *email_));
    auto* frame = new UiTextFrame(*description_);
    frame->setMinimumHeight(descriptionHeight);
    column->addLayout(makeField(bug_report_text::description, Need::required, *frame, *description_), 1);
    return fields;
}

QLayout* BugReportSheet::makeAnswers() {
    connect(cancel_, &QPushButton::clicked, this, [this] { model_.dismiss(); });
    connect(report_, &QPushButton::clicked, this, [this] { model_.report(); });
    auto* row = tightLayout<QHBoxLayout>(nullptr, answerSpacing);
    row->addStretch();
    row->addWidget(spinner_);
    row->addWidget(cancel_);
    row->addWidget(report_);
    return row;
}

/// Keys that work wherever in the form the focus is, once a press. An editor keeps those that it uses itself.
void BugReportSheet::bindKeys() {
    const auto bind = [this](Qt::Key key, auto action) {
        auto* shortcut = new QShortcut(key, this);
        shortcut->setAutoRepeat(false);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    bind(Qt::Key_Escape, [this] { model_.dismiss(); });
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter})
        bind(key, [this] { report_->click(); });
}

/// A button that is disabled loses the keyboard, and the next key would go to whatever comes after it.
void BugReportSheet::renderReport() {
    if (model_.isReporting() && report_->hasFocus())
        setFocus(Qt::ActiveWindowFocusReason);
    report_->setEnabled(model_.canSubmit() && !model_.isReporting());
    if (report_->isEnabled() && hasFocus())
        report_->setFocus(Qt::ActiveWindowFocusReason);
}

void BugReportSheet::render() {
    const auto show = [](auto& field, const std::string& typed) {
        if (const auto wanted = toQString(typed); field.text() != wanted)
            field.setText(wanted);
    };
    show(*title_, model_.title());
    show(*email_, model_.email());
    description_->setBoundText(toQString(model_.description()));
    renderReport();
    spinner_->setVisible(model_.isReporting());
    const QString error = toQString(model_.reportError().value_or(""));
    error_->setVisible(!error.isEmpty());
    if (error == error_->text())
        return;
    error_->setText(error);
    QAccessibleEvent alert(error_, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

} // namespace glimmerly
