#pragma once

#include <QWidget>

class QVBoxLayout;

namespace glimmerly {

/// A title over a box with what belongs together.
class PreferencesSettingsSection : public QWidget {
public:
    explicit PreferencesSettingsSection(const QString& title, QWidget* parent = nullptr);

    /// How far the content may reach into the box's padding, with focus rings that must not shift it.
    void setBleed(const QMargins& bleed);
    /// The box's content, aligned leading.
    [[nodiscard]] QVBoxLayout& content() { return *content_; }

private:
    QWidget* box_;
    QVBoxLayout* content_;
};

} // namespace glimmerly
