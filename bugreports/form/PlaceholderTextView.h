#pragma once

#include <QPlainTextEdit>

namespace glimmerly {

/// An editor for several lines of plain text, which says what to type while it is empty. It brings neither
/// background nor border. Tab leaves it, so that the keyboard alone is enough.
class PlaceholderTextView : public QPlainTextEdit {
public:
    explicit PlaceholderTextView(const QString& placeholder, QWidget* parent = nullptr);

    /// Replaces the text by one that differs from it. That cannot be undone; what the user types can.
    void setBoundText(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString placeholder_;
};

} // namespace glimmerly
