#include "platform/qt/AlertBox.h"

#include "ui/QtConversions.h"
#include "ui/UiButton.h"
#include "ui/UiColors.h"
#include "ui/UiSymbol.h"

#include <QDialogButtonBox>
#include <QEvent>
#include <QLabel>
#include <QLayout>
#include <QPainter>

#include <algorithm>

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

} // namespace

AlertBox::AlertBox(const Alert& alert, QWidget* parent) : QMessageBox(parent), style_(alert.style) {
    // The caller waits, but other windows of ours stay in use: a screenshot asked for meanwhile must not open
    // an overlay that covers the alert and takes no keys because of it.
    setWindowModality(Qt::WindowModal);
    setIcon(iconFor(style_));
    setTextFormat(Qt::PlainText);
    setText(toQString(alert.messageText));
    setInformativeText(toQString(alert.informativeText));
    addButtons(alert);
    layout()->setContentsMargins(padding, padding, padding, padding);
    layout()->setSpacing(spacing);
    showSymbol();
    styleTexts();
}

int AlertBox::choice() const {
    const auto chosen = std::ranges::find(buttons_, clickedButton());
    if (chosen == buttons_.end())
        return buttons_.empty() ? 0 : static_cast<int>(buttons_.size()) - 1;
    return static_cast<int>(chosen - buttons_.begin());
}

void AlertBox::changeEvent(QEvent* event) {
    QMessageBox::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        showSymbol();
}

/// Left to right as the desktop orders them.
void AlertBox::addButtons(const Alert& alert) {
    for (std::size_t index = 0; index < alert.buttons.size(); ++index) {
        const bool isPreferred = index == alert.preferredButton;
        auto* button = new UiButton(toQString(alert.buttons[index]),
                                    {.kind = isPreferred ? ButtonKind::prominent : ButtonKind::bordered});
        addButton(button, index == 0 ? AcceptRole : RejectRole);
        if (isPreferred)
            setDefaultButton(button);
        setEscapeButton(button);
        buttons_.push_back(button);
    }
    if (auto* row = findChild<QDialogButtonBox*>()) {
        row->setContentsMargins(0, aboveButtons, 0, 0);
        row->layout()->setSpacing(spacing);
    }
}

// By the names that Qt (6.4) gives them.
QLabel* AlertBox::symbolLabel() const {
    return findChild<QLabel*>("qt_msgboxex_icon_label");
}

QLabel* AlertBox::messageLabel() const {
    return findChild<QLabel*>("qt_msgbox_label");
}

QLabel* AlertBox::explanationLabel() const {
    return findChild<QLabel*>("qt_msgbox_informativelabel");
}

void AlertBox::styleTexts() {
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

void AlertBox::showSymbol() {
    auto* label = symbolLabel();
    const auto symbol =
        SymbolImage::symbol(style_ == AlertStyle::informational ? "info.circle" : "exclamationmark.triangle",
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

} // namespace glimmerly
