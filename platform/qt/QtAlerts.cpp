#include "platform/qt/QtAlerts.h"

#include "ui/QtConversions.h"
#include "ui/WindowPlacement.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <vector>

namespace glimmerly {

namespace {

constexpr int explanationWidth = 360;

QMessageBox::Icon iconFor(AlertStyle style) {
    switch (style) {
    case AlertStyle::warning:
        return QMessageBox::Warning;
    case AlertStyle::informational:
        return QMessageBox::Information;
    case AlertStyle::critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

/// The message stands out from the explanation below it, which has room for a path.
void styleLabels(QMessageBox& box) {
    if (auto* message = box.findChild<QLabel*>("qt_msgbox_label")) {
        QFont font = message->font();
        font.setBold(true);
        message->setFont(font);
    }
    if (auto* explanation = box.findChild<QLabel*>("qt_msgbox_informativelabel"))
        explanation->setMinimumWidth(explanationWidth);
}

/// The buttons, left to right as the desktop orders them, the first one chosen by Return.
std::vector<QAbstractButton*> addButtons(QMessageBox& box, const std::vector<std::string>& titles) {
    std::vector<QAbstractButton*> buttons;
    for (const auto& title : titles) {
        const auto role = buttons.empty() ? QMessageBox::AcceptRole : QMessageBox::RejectRole;
        buttons.push_back(box.addButton(toQString(title), role));
    }
    if (!buttons.empty()) {
        box.setDefaultButton(static_cast<QPushButton*>(buttons.front()));
        box.setEscapeButton(buttons.back());
    }
    return buttons;
}

} // namespace

int QtAlerts::runModal(const Alert& alert) {
    QMessageBox box;
    box.setIcon(iconFor(alert.style));
    box.setTextFormat(Qt::PlainText);
    box.setText(toQString(alert.messageText));
    box.setInformativeText(toQString(alert.informativeText));
    // The caller waits, but other windows of ours stay in use: a screenshot asked for meanwhile must not open
    // an overlay that covers the alert and takes no keys because of it.
    box.setWindowModality(Qt::WindowModal);
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    styleLabels(box);
    const auto buttons = addButtons(box, alert.buttons);

    box.adjustSize();
    centerOnDisplayUnderMouse(box);
    box.show();
    box.raise();
    box.activateWindow();
    const std::stop_callback atStop(
        alert.stop, [&box] { QMetaObject::invokeMethod(&box, "reject", Qt::QueuedConnection); });
    box.exec();

    const auto chosen = std::ranges::find(buttons, box.clickedButton());
    if (chosen == buttons.end())
        return buttons.empty() ? 0 : static_cast<int>(buttons.size()) - 1;
    return static_cast<int>(chosen - buttons.begin());
}

void QtAlerts::beep() {
    QApplication::beep();
}

} // namespace glimmerly
