#include "settings/GeneralPreferencesPane.h"

#include "capture/permission/ScreenRecordingPermission.h"
#include "hotkeys/recorder/HotkeyRecorder.h"
#include "settings/PreferencesSettingsSection.h"
#include "settings/SettingsRows.h"
#include "settings/SettingsText.h"
#include "ui/QtConversions.h"
#include "ui/UiButton.h"
#include "ui/UiLayout.h"
#include "ui/UiText.h"

#include <chrono>

namespace glimmerly {

namespace {

constexpr std::chrono::milliseconds pollInterval{1000};

} // namespace

GeneralPreferencesPane::GeneralPreferencesPane(const HotkeyRecorderServices& recorder,
                                               ScreenRecordingPermission& permission, QWidget* parent)
    : PreferencesPage(toQString(settings_text::general), parent), permission_(permission) {
    addShortcuts(recorder);
    addPrivacy();
    pollTimer_.setInterval(pollInterval);
    connect(&pollTimer_, &QTimer::timeout, this, [this] { probe(); });
}

void GeneralPreferencesPane::addShortcuts(const HotkeyRecorderServices& recorder) {
    auto* label = new UiLabel(toQString(settings_text::takeScreenshot), text_style::body);
    addSection(settings_text::shortcutsSection).content().addWidget(new HotkeyRecorder(recorder, label));
}

void GeneralPreferencesPane::addPrivacy() {
    auto& content = addSection(settings_text::privacySection).content();
    status_ = new UiLabel(toQString(settings_text::notGranted), text_style::bodySecondary);
    content.addLayout(
        makeValueRow(toQString(settings_text::screenRecording), text_style::bodyMedium, *status_));
    content.addWidget(
        new UiLabel(toQString(settings_text::screenRecordingPurpose), text_style::calloutSecondary));
    auto* open = new UiButton(toQString(settings_text::openSystemSettings),
                              {.kind = ButtonKind::prominent, .size = ControlSize::large});
    connect(open, &QPushButton::clicked, this, [this] { permission_.requestAccess(); });
    content.addWidget(open);
}

void GeneralPreferencesPane::showEvent(QShowEvent* event) {
    PreferencesPage::showEvent(event);
    probe();
    pollTimer_.start();
}

void GeneralPreferencesPane::hideEvent(QHideEvent* event) {
    PreferencesPage::hideEvent(event);
    pollTimer_.stop();
}

void GeneralPreferencesPane::probe() {
    screenCaptureGranted_ = permission_.isGranted();
    status_->setText(toQString(screenCaptureGranted_ ? settings_text::granted : settings_text::notGranted));
}

} // namespace glimmerly
