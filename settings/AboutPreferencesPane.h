#pragma once

#include "settings/PreferencesPage.h"
#include "settings/SettingsServices.h"

#include <QPointer>

#include <functional>
#include <memory>
#include <string_view>

namespace glimmerly {

class BugReportSheetModel;
class PreferencesSettingsSection;
class UiButton;
class UiSheet;
class UiSwitch;

/// The version, what is set about updates, links, and the form for bug reports, which opens over the window.
class AboutPreferencesPane : public PreferencesPage {
public:
    explicit AboutPreferencesPane(const SettingsServices& services, QWidget* parent = nullptr);
    ~AboutPreferencesPane() override;

    [[nodiscard]] bool isShowingBugReportSheet() const { return bugReport_ != nullptr; }
    /// Opens the form, empty; does nothing while it is open.
    void showBugReportSheet();

private:
    void addApplication();
    void addUpdates();
    void addLinks();
    void addLink(PreferencesSettingsSection& section, const char* label, std::string_view symbol,
                 std::function<void()> action);
    void renderUpdates();
    void dismissBugReportSheet();

    SettingsServices services_;
    UiButton* checkForUpdates_ = nullptr;
    UiSwitch* automaticallyCheck_ = nullptr;
    UiSwitch* automaticallyDownload_ = nullptr;
    struct BugReport;
    std::unique_ptr<BugReport> bugReport_; ///< none while the form is closed
};

} // namespace glimmerly
