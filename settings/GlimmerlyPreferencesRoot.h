#pragma once

#include "settings/SettingsPane.h"
#include "settings/SettingsServices.h"

#include <QWidget>

#include <optional>

class QSplitter;
class QStackedWidget;

namespace glimmerly {

class NavigationSplitNonCollapsingSidebarInstaller;
class SettingsSidebar;
class UiButton;

enum class ColumnVisibility { all, detailOnly };

/// What the settings window shows: a sidebar, which cannot be hidden, and the pane that is selected in it.
class GlimmerlyPreferencesRoot : public QWidget {
public:
    static constexpr int minimumWidth = 680;  // points
    static constexpr int minimumHeight = 460; // points

    explicit GlimmerlyPreferencesRoot(const SettingsServices& services, QWidget* parent = nullptr);

    [[nodiscard]] std::optional<SettingsPane> selectedPane() const;
    /// None shows a placeholder.
    void setSelectedPane(std::optional<SettingsPane> pane);

    [[nodiscard]] ColumnVisibility columnVisibility() const { return columnVisibility_; }
    /// The sidebar comes back at once when only the detail was to be seen.
    void setColumnVisibility(ColumnVisibility visibility);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* makeSidebar();
    [[nodiscard]] QWidget& page(std::optional<SettingsPane> pane);
    [[nodiscard]] QWidget* makePage(std::optional<SettingsPane> pane) const;
    void showSelected();

    SettingsServices services_;
    ColumnVisibility columnVisibility_ = ColumnVisibility::all;
    QSplitter* split_;
    SettingsSidebar* sidebar_;
    UiButton* menu_;
    QWidget* sidebarColumn_;
    QStackedWidget* detail_;
    std::array<QWidget*, settingsPanes.size() + 1>
        pages_{}; ///< each made when first shown; last the placeholder
    NavigationSplitNonCollapsingSidebarInstaller* installer_;
};

} // namespace glimmerly
