#pragma once

#include <QScrollArea>

class QVBoxLayout;

namespace glimmerly {

class PreferencesSettingsSection;

/// A pane: its title over its sections, scrolling where the window is too low for them.
class PreferencesPage : public QScrollArea {
public:
    explicit PreferencesPage(const QString& title, QWidget* parent = nullptr);

protected:
    /// Below those that are there.
    PreferencesSettingsSection& addSection(const char* title);

private:
    QVBoxLayout* column_;
};

} // namespace glimmerly
