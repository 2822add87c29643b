#pragma once

#include "hotkeys/HotkeyRecorderModel.h"

#include <QTimer>
#include <QWidget>

#include <stop_token>

class QAbstractButton;

namespace glimmerly {

class HotkeyRecorderSegment;

/// A row with the caller's label and the control that shows the hotkey, records another and clears it. As
/// wide as it is given room. Hiding it, or the window it is in, ends a recording and takes its alert down; an
/// overlay that opens ends a recording too.
class HotkeyRecorder : public QWidget {
public:
    /// Takes `label` as its child.
    HotkeyRecorder(const HotkeyRecorderServices& services, QWidget* label, QWidget* parent = nullptr);
    ~HotkeyRecorder() override;

    [[nodiscard]] HotkeyRecorderModel& model() { return model_; }
    [[nodiscard]] QAbstractButton& leadingSegment();
    [[nodiscard]] QAbstractButton& trailingSegment();

protected:
    void hideEvent(QHideEvent* event) override;

private:
    [[nodiscard]] QWidget* makeControl(QWidget& label);
    void leadingPressed();
    void trailingPressed();
    void render();
    void presentReservedError();

    HotkeyRecorderServices services_;
    HotkeyRecorderModel model_;
    HotkeyRecorderSegment* leading_;
    HotkeyRecorderSegment* trailing_;
    QTimer renderSoon_; ///< once the change at hand is made
    enum class Alerting { off, on } alerting_ = Alerting::off;
    std::stop_source alert_{std::nostopstate};
    Observation layoutObservation_;
    Observation overlayObservation_;
};

} // namespace glimmerly
