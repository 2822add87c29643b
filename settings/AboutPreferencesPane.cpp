#include "settings/AboutPreferencesPane.h"

#include "bugreports/form/BugReportSheet.h"
#include "bugreports/form/BugReportSheetModel.h"
#include "platform/LinkOpener.h"
#include "platform/MainQueue.h"
#include "settings/PreferencesSettingsSection.h"
#include "settings/SettingsRows.h"
#include "settings/SettingsText.h"
#include "settings/updates/UpdaterViewModel.h"
#include "ui/QtConversions.h"
#include "ui/UiButton.h"
#include "ui/UiLayout.h"
#include "ui/UiSheet.h"
#include "ui/UiSwitch.h"
#include "ui/UiText.h"

namespace glimmerly {

namespace {

constexpr int linkSpacing = 4;

} // namespace

struct AboutPreferencesPane::BugReport {
    BugReportSheetModel model;
    QPointer<UiSheet> sheet{}; ///< a child of the window
};

AboutPreferencesPane::AboutPreferencesPane(const SettingsServices& services, QWidget* parent)
    : PreferencesPage(toQString(settings_text::about), parent), services_(services) {
    addApplication();
    addUpdates();
    addLinks();
}

AboutPreferencesPane::~AboutPreferencesPane() {
    services_.updaterViewModel.setOnChange({});
    if (bugReport_)
        delete bugReport_->sheet.data(); // before its model
}

void AboutPreferencesPane::addApplication() {
    auto* version = new UiLabel(toQString(services_.bundle.versionText()), text_style::bodySecondary);
    addSection(settings_text::applicationSection)
        .content()
        .addLayout(makeValueRow(toQString(settings_text::version), text_style::body, *version));
}

void AboutPreferencesPane::addUpdates() {
    auto& section = addSection(settings_text::updatesSection);
    section.setBleed({0, 0, UiSwitch::ringMargin, 0});
    auto& content = section.content();
    checkForUpdates_ = new UiButton(toQString(settings_text::checkForUpdates),
                                    {.kind = ButtonKind::prominent, .size = ControlSize::large});
    checkForUpdates_->setSymbol("arrow.clockwise.circle");
    automaticallyCheck_ = new UiSwitch(toQString(settings_text::automaticallyCheck));
    automaticallyDownload_ = new UiSwitch(toQString(settings_text::automaticallyDownload));
    content.addWidget(checkForUpdates_);
    content.addWidget(automaticallyCheck_);
    content.addWidget(automaticallyDownload_);
    renderUpdates();
    services_.updaterViewModel.setOnChange([this] { renderUpdates(); });
    connect(checkForUpdates_, &QPushButton::clicked, this, [this] { services_.checkForUpdates(); });
    connect(automaticallyCheck_, &QCheckBox::clicked, this,
            [this](bool on) { services_.updaterViewModel.setAutomaticallyChecksForUpdates(on); });
    connect(automaticallyDownload_, &QCheckBox::clicked, this,
            [this](bool on) { services_.updaterViewModel.setAutomaticallyDownloadsUpdates(on); });
}

void AboutPreferencesPane::renderUpdates() {
    const auto& updates = services_.updaterViewModel;
    checkForUpdates_->setEnabled(updates.canCheckForUpdates());
    automaticallyDownload_->setEnabled(updates.allowsAutomaticUpdates());
    automaticallyCheck_->setChecked(updates.automaticallyChecksForUpdates());
    automaticallyDownload_->setChecked(updates.automaticallyDownloadsUpdates());
}

void AboutPreferencesPane::addLinks() {
    auto& section = addSection(settings_text::linksSection);
    section.setBleed({ui_style::linkSidePadding, 0, 0, 0});
    section.content().setSpacing(linkSpacing);
    addLink(section, settings_text::website, "link",
            [this] { services_.links.open(services_.bundle.websiteURL); });
    addLink(section, settings_text::donate, "cup.and.saucer",
            [this] { services_.links.open(services_.bundle.donationURL); });
    addLink(section, settings_text::reportBug, "ladybug", [this] { showBugReportSheet(); });
}

void AboutPreferencesPane::addLink(PreferencesSettingsSection& section, const char* label,
                                   std::string_view symbol, std::function<void()> action) {
    auto* link = new UiButton(toQString(label), {.kind = ButtonKind::link});
    link->setSymbol(symbol);
    connect(link, &QPushButton::clicked, this, std::move(action));
    section.content().addWidget(link);
}

void AboutPreferencesPane::showBugReportSheet() {
    if (bugReport_)
        return;
    // NOLINTNEXTLINE(modernize-make-unique): the model cannot be moved into it
    bugReport_.reset(new BugReport{{services_.bugReports, [this] { dismissBugReportSheet(); }}});
    bugReport_->sheet = new UiSheet(*window(), new BugReportSheet(bugReport_->model));
}

void AboutPreferencesPane::dismissBugReportSheet() {
    if (!bugReport_)
        return;
    // The form asks for it from within its own handlers.
    const std::shared_ptr<BugReport> closing = std::move(bugReport_);
    closing->sheet->hide();
    closing->model.setOnChange({});
    services_.mainQueue.post([closing] { delete closing->sheet.data(); });
}

} // namespace glimmerly
