#include "platform/qt/QtAlerts.h"

#include "ui/QtConversions.h"
#include "ui/UiButton.h"
#include "ui/UiColors.h"
#include "ui/UiSymbol.h"
#include "ui/WindowPlacement.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QEvent>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPainter>

#include <algorithm>
#include <vector>

namespace glimmerly {

namespace {

constexpr int explanationWidth = 360; // at least: it has room for a path
constexpr double symbolSize = 32;
constexpr int padding = 24;
constexpr int spacing = 8;
constexpr int aboveButtons = 10; // beside the spacing

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

const QColor& colorFor(AlertStyle style, const UiColors& colors) {
    switch (style) {
    case AlertStyle::warning:
        return colors.warning;
    case AlertStyle::informational:
        return colors.link;
    case AlertStyle::critical:
        break;
    }
    return colors.error;
}

/// Qt's message box, which brings keys, roles and the desktop's order of buttons, in the look of our own
/// windows.
class AlertBox : public QMessageBox {
public:
    explicit AlertBox(const Alert& alert) : style_(alert.style) {
        setIcon(iconFor(style_));
        setTextFormat(Qt::PlainText);
        setText(toQString(alert.messageText));
        setInformativeText(toQString(alert.informativeText));
        addButtons(alert.buttons);
        layout()->setContentsMargins(padding, padding, padding, padding);
        layout()->setSpacing(spacing);
        showSymbol();
        styleTexts();
    }

    /// The index of the button that was chosen; the last one's when none was.
    [[nodiscard]] int choice() const {
        const auto chosen = std::ranges::find(buttons_, clickedButton());
        if (chosen == buttons_.end())
            return buttons_.empty() ? 0 : static_cast<int>(buttons_.size()) - 1;
        return static_cast<int>(chosen - buttons_.begin());
    }

protected:
    void changeEvent(QEvent* event) override {
        QMessageBox::changeEvent(event);
        if (event->type() == QEvent::PaletteChange)
            showSymbol();
    }

private:
    /// Left to right as the desktop orders them, the first one chosen by Return.
    void addButtons(const std::vector<std::string>& titles) {
        for (const auto& title : titles) {
            const bool isFirst = buttons_.empty();
            auto* button = new UiButton(toQString(title),
                                        {.kind = isFirst ? ButtonKind::prominent : ButtonKind::bordered});
            addButton(button, isFirst ? AcceptRole : RejectRole);
            if (isFirst)
                setDefaultButton(button);
            setEscapeButton(button);
            buttons_.push_back(button);
        }
        if (auto* row = findChild<QDialogButtonBox*>()) {
            row->setContentsMargins(0, aboveButtons, 0, 0);
            row->layout()->setSpacing(spacing);
        }
    }

    /// By the names that Qt (6.4) gives them.
    [[nodiscard]] QLabel* symbolLabel() const { return findChild<QLabel*>("qt_msgboxex_icon_label"); }
    [[nodiscard]] QLabel* messageLabel() const { return findChild<QLabel*>("qt_msgbox_label"); }
    [[nodiscard]] QLabel* explanationLabel() const {
        return findChild<QLabel*>("qt_msgbox_informativelabel");
    }

    void styleTexts() {
        auto* explanation = explanationLabel();
        if (explanation) {
            explanation->setFont(uiFont(text_style::callout));
            explanation->setMinimumWidth(explanationWidth);
            explanation->setContentsMargins(0, 0, 0, 0);
        }
        if (auto* message = messageLabel()) {
            message->setFont(uiFont(text_style::bodySemibold));
            if (const auto* symbol = symbolLabel(); symbol && !explanation)
                message->setMinimumHeight(symbol->sizeHint().height()); // in the middle beside it
        }
    }

    void showSymbol() {
        auto* label = symbolLabel();
        const auto symbol = SymbolImage::symbol(
            style_ == AlertStyle::informational ? "info.circle" : "exclamationmark.triangle",
            {.pointSize = symbolSize});
        if (!label || !symbol)
            return;
        const QSize size = symbol->size().toSize();
        QPixmap picture(size * devicePixelRatioF());
        picture.setDevicePixelRatio(devicePixelRatioF());
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paintSymbol(painter, *symbol, QRect(QPoint(), size), colorFor(style_, uiColors(*this)));
        painter.end();
        label->setPixmap(picture);
    }

    AlertStyle style_;
    std::vector<QAbstractButton*> buttons_;
};

} // namespace

int QtAlerts::runModal(const Alert& alert) {
    AlertBox box(alert);
    // The caller waits, but other windows of ours stay in use: a screenshot asked for meanwhile must not open
    // an overlay that covers the alert and takes no keys because of it.
    box.setWindowModality(Qt::WindowModal);
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    box.adjustSize();
    centerOnDisplayUnderMouse(box);
    box.show();
    box.raise();
    box.activateWindow();
    const std::stop_callback atStop(
        alert.stop, [&box] { QMetaObject::invokeMethod(&box, "reject", Qt::QueuedConnection); });
    box.exec();

    return box.choice();
}

void QtAlerts::beep() {
    QApplication::beep();
}

} // namespace glimmerly
