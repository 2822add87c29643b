#pragma once

#include "platform/Alerts.h"

#include <QMessageBox>

#include <vector>

class QLabel;

namespace glimmerly {

struct UiColors;

/// Qt's message box, which brings keys, roles and the desktop's order of buttons, in the look of our own
/// windows. Modal to the window it belongs to, and to no other.
class AlertBox : public QMessageBox {
public:
    explicit AlertBox(const Alert& alert, QWidget* parent = nullptr);

    /// The index of the button that was chosen; the last one's when none was.
    [[nodiscard]] int choice() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    void addButtons(const Alert& alert);
    [[nodiscard]] QLabel* symbolLabel() const;
    [[nodiscard]] QLabel* messageLabel() const;
    [[nodiscard]] QLabel* explanationLabel() const;
    void styleTexts();
    void showSymbol();

    AlertStyle style_;
    std::vector<QAbstractButton*> buttons_;
};

} // namespace glimmerly
