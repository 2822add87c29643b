#include "hotkeys/recorder/HotkeyRecorder.h"

#include "hotkeys/recorder/HotkeyRecorderSegment.h"
#include "hotkeys/recorder/HotkeyRecorderStyle.h"
#include "hotkeys/recorder/HotkeyRecorderText.h"
#include "platform/Alerts.h"
#include "platform/KeyboardLayout.h"
#include "platform/OverlayWindows.h"
#include "ui/CommonText.h"

#include <QAccessible>
#include <QBoxLayout>
#include <QPointer>

#include <utility>

namespace glimmerly {

namespace style = hotkey_recorder_style;
namespace texts = hotkey_recorder_text;

namespace {

constexpr HotkeyRecorderSegment::Symbol cancelSymbol{"escape", style::escapeInset, texts::cancel};
constexpr HotkeyRecorderSegment::Symbol recordSymbol{"record.circle", style::recordInset, texts::record};
constexpr HotkeyRecorderSegment::Symbol clearSymbol{"xmark", style::clearInset, texts::clear};

} // namespace

HotkeyRecorder::HotkeyRecorder(const HotkeyRecorderServices& services, QWidget* label, QWidget* parent)
    : QWidget(parent), services_(services), model_(services),
      leading_(new HotkeyRecorderSegment(HotkeyRecorderButtonStyle::Segment::leading)),
      trailing_(new HotkeyRecorderSegment(HotkeyRecorderButtonStyle::Segment::trailing)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(label, 1, Qt::AlignVCenter);
    row->addSpacing(2 * style::rowSpacing + style::minimumSpacer);
    row->addWidget(makeControl(*label), 0, Qt::AlignVCenter);

    connect(leading_, &QAbstractButton::clicked, this, [this] { leadingPressed(); });
    connect(trailing_, &QAbstractButton::clicked, this, [this] { trailingPressed(); });
    renderSoon_.setSingleShot(true);
    connect(&renderSoon_, &QTimer::timeout, this, [this] { render(); });
    model_.setOnWillChange([this] { renderSoon_.start(); });
    layoutObservation_ = services_.keyboardLayout.observe([this] { render(); });
    overlayObservation_ = services_.notifications.observe(OverlayWindows::willShowNotification,
                                                          [this] { model_.stopRecording(); });
    render();
}

HotkeyRecorder::~HotkeyRecorder() {
    alert_.request_stop();
}

QWidget* HotkeyRecorder::makeControl(QWidget& label) {
    auto* control = new QWidget;
    control->setAccessibleName(QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Name));
    auto* segments = new QHBoxLayout(control);
    segments->setContentsMargins(0, 0, 0, 0);
    segments->setSpacing(style::segmentSpacing);
    constexpr int trailingWidth = style::controlHeight;
    leading_->setFixedSize(style::controlWidth - style::segmentSpacing - trailingWidth, style::controlHeight);
    trailing_->setFixedSize(trailingWidth, style::controlHeight);
    segments->addWidget(leading_);
    segments->addWidget(trailing_);
    return control;
}

QAbstractButton& HotkeyRecorder::leadingSegment() {
    return *leading_;
}

QAbstractButton& HotkeyRecorder::trailingSegment() {
    return *trailing_;
}

void HotkeyRecorder::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    model_.stopRecording();
    model_.dismissSystemReservedError(); // its alert may be about to open
    alert_.request_stop();
}

void HotkeyRecorder::leadingPressed() {
    if (model_.isRecording())
        model_.stopRecording();
    else
        model_.startRecording();
}

void HotkeyRecorder::trailingPressed() {
    if (model_.isRecording())
        model_.stopRecording();
    else if (model_.hotkeySettings().keyCombination())
        model_.hotkeySettings().setKeyCombination(std::nullopt);
    else
        model_.startRecording();
}

void HotkeyRecorder::render() {
    renderSoon_.stop();
    const auto& combination = model_.hotkeySettings().keyCombination();
    leading_->setHighlighted(model_.isRecording());
    if (model_.isRecording()) {
        leading_->showText(texts::typeHotkey);
        trailing_->showSymbol(cancelSymbol);
    } else if (combination) {
        leading_->showText(QString::fromStdString(combination->displayString(services_.keyboardLayout)));
        trailing_->showSymbol(clearSymbol);
    } else {
        leading_->showText(texts::recordHotkey);
        trailing_->showSymbol(recordSymbol);
    }
    if (model_.isPresentingSystemReservedError())
        presentReservedError();
}

void HotkeyRecorder::presentReservedError() {
    if (std::exchange(alerting_, Alerting::on) == Alerting::on)
        return;
    alert_ = {};
    const QPointer self(this); // may go while the alert is open
    services_.alerts.runModal({.messageText = texts::reservedTitle,
                               .informativeText = "",
                               .buttons = {common_text::ok},
                               .stop = alert_.get_token()});
    if (!self)
        return;
    alerting_ = Alerting::off;
    model_.dismissSystemReservedError();
}

} // namespace glimmerly
