#pragma once

#include "settings/SettingsPane.h"

#include <QListWidget>

#include <functional>
#include <optional>

namespace glimmerly {

class FocusVisibility;

/// The list of panes, of which one is selected, or none.
class SettingsSidebar : public QListWidget {
public:
    static constexpr int rowPadding = 8; ///< points left and right of what a row shows

    explicit SettingsSidebar(QWidget* parent = nullptr);

    [[nodiscard]] std::optional<SettingsPane> selectedPane() const;
    void select(std::optional<SettingsPane> pane);
    /// Runs after each change of the selection, whoever made it.
    void setOnSelect(std::function<void()> handler) { onSelect_ = std::move(handler); }

    [[nodiscard]] bool showsFocus() const;

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    class Row;

    FocusVisibility& focus_;
    std::function<void()> onSelect_;
};

} // namespace glimmerly
