#pragma once

#include <QScrollArea>

class QBoxLayout;

namespace glimmerly {

class PermissionsOnboardingModel;
class UiLabel;
class UiButton;

/// Shows the model: why the permission is needed, how to grant it, and the three actions. Scrolls where its
/// texts need more room than the window has.
class PermissionsOnboardingView : public QScrollArea {
public:
    /// `model` must outlive the view.
    explicit PermissionsOnboardingView(PermissionsOnboardingModel& model, QWidget* parent = nullptr);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QLayout* makeHeader();
    QWidget* makeSteps();
    QWidget* makeActions();
    void render();
    /// Puts the buttons below each other where they do not fit beside each other.
    void layOutButtons();

    PermissionsOnboardingModel& model_;
    UiLabel* detail_ = nullptr;
    QBoxLayout* buttons_ = nullptr;
    UiButton* settingsButton_ = nullptr;
};

} // namespace glimmerly
