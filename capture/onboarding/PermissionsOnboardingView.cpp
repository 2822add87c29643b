#include "capture/onboarding/PermissionsOnboardingView.h"

#include "capture/onboarding/PermissionIconTile.h"
#include "capture/onboarding/PermissionsOnboardingModel.h"
#include "capture/onboarding/PermissionsOnboardingText.h"
#include "ui/UiButton.h"
#include "ui/UiLayout.h"
#include "ui/UiShapes.h"
#include "ui/UiStyle.h"
#include "ui/UiText.h"

#include <QScrollBar>
#include <QShortcut>

#include <algorithm>

namespace glimmerly {

namespace {

constexpr int contentWidth = 560;
constexpr int sidePadding = 32;
constexpr int topPadding = 20;
constexpr int bottomPadding = 32;
constexpr int groupSpacing = 28;
constexpr int iconSpacing = 20;
constexpr int shadowMargin = PermissionIconTile::shadowMargin;
constexpr int titleSpacing = 8;
constexpr int cardPadding = 18;
constexpr int dividerPadding = 12;
constexpr int badgeSpacing = 14;
constexpr int detailSpacing = 14;
constexpr int settingsSpacing = 12;
constexpr int buttonSpacing = 8;

QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

/// One step of the card: badge and text on one baseline.
QWidget* makeStep(int number, const char* step) {
    auto* row = new QWidget;
    auto* layout = tightLayout<QHBoxLayout>(row, badgeSpacing);
    auto* badge = new NumberBadge(number);
    auto* label = new UiLabel(text(step), text_style::body);
    label->setContentsMargins(0, std::max(0, badge->baseline() - label->fontMetrics().ascent()), 0, 0);
    layout->addWidget(badge, 0, Qt::AlignTop);
    layout->addWidget(label, 1, Qt::AlignTop);
    return row;
}

/// A key that works wherever the focus is in the view's window, once a press.
template <typename Action>
void bind(QWidget* view, Qt::Key key, Action action) {
    auto* shortcut = new QShortcut(key, view);
    shortcut->setAutoRepeat(false);
    QObject::connect(shortcut, &QShortcut::activated, view, action);
}

} // namespace

PermissionsOnboardingView::PermissionsOnboardingView(PermissionsOnboardingModel& model, QWidget* parent)
    : QScrollArea(parent), model_(model) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    // Keys that scroll come here from whichever button has the focus.
    setFocusPolicy(Qt::NoFocus);
    auto* content = new QWidget;
    content->setMaximumWidth(contentWidth);
    auto* column = tightLayout<QVBoxLayout>(content, 0);
    // The shadow of the header's tile lies in the padding and the spacing around the header.
    column->setContentsMargins(sidePadding - shadowMargin, topPadding - shadowMargin, sidePadding,
                               bottomPadding);
    column->addLayout(makeHeader());
    column->addSpacing(groupSpacing - shadowMargin);
    column->addWidget(makeSteps());
    column->addSpacing(groupSpacing);
    column->addWidget(makeActions());
    column->addStretch(1);
    setWidget(content);

    bind(this, Qt::Key_Escape, [this] { model_.quitAndReopen(); });
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter})
        bind(this, key, [this] { model_.continueTapped(); });
    model_.setOnChange([this] { render(); });
    render();
}

QLayout* PermissionsOnboardingView::makeHeader() {
    auto* row = new QHBoxLayout;
    row->setSpacing(iconSpacing - shadowMargin);
    row->addWidget(new PermissionIconTile, 0, Qt::AlignTop);
    auto* titles = new QVBoxLayout;
    titles->setContentsMargins(0, shadowMargin, 0, shadowMargin);
    titles->setSpacing(titleSpacing);
    titles->addWidget(new UiLabel(text(onboarding_text::title), text_style::largeTitle));
    titles->addWidget(new UiLabel(text(onboarding_text::purpose), text_style::bodySecondary));
    row->addLayout(titles, 1);
    row->setAlignment(titles, Qt::AlignTop);
    return row;
}

QWidget* PermissionsOnboardingView::makeSteps() {
    auto* section = new QWidget;
    auto* column = tightLayout<QVBoxLayout>(section, ui_style::captionToCardSpacing);
    column->setContentsMargins(shadowMargin, 0, 0, 0);
    column->addWidget(new UiLabel(text(onboarding_text::stepsCaption), text_style::sectionTitle));
    auto* card = new Card(cardPadding);
    auto* rows = tightLayout<QVBoxLayout>(card, 0);
    int number = 0;
    for (const char* step : onboarding_text::steps) {
        if (number > 0) {
            rows->addSpacing(dividerPadding);
            rows->addWidget(new Divider);
            rows->addSpacing(dividerPadding);
        }
        rows->addWidget(makeStep(++number, step));
    }
    column->addWidget(card);
    return section;
}

QWidget* PermissionsOnboardingView::makeActions() {
    auto* section = new QWidget;
    auto* column = tightLayout<QVBoxLayout>(section, detailSpacing);
    column->setContentsMargins(shadowMargin, 0, 0, 0);
    detail_ = new UiLabel(QString(), text_style::calloutSecondary);
    column->addWidget(detail_);

    settingsButton_ = new UiButton(QString(), {.kind = ButtonKind::prominent, .size = ControlSize::large});
    connect(settingsButton_, &QPushButton::clicked, this, [this] { model_.openSystemSettings(); });
    auto* reopen = new UiButton(text(onboarding_text::quitAndReopen), {});
    connect(reopen, &QPushButton::clicked, this, [this] { model_.quitAndReopen(); });
    auto* proceed = new UiButton(text(onboarding_text::continueTitle), {.kind = ButtonKind::prominent});
    connect(proceed, &QPushButton::clicked, this, [this] { model_.continueTapped(); });

    auto* answers = tightLayout<QHBoxLayout>(nullptr, buttonSpacing);
    answers->addWidget(reopen);
    answers->addWidget(proceed);
    answers->addStretch();
    buttons_ = tightLayout<QHBoxLayout>(nullptr, settingsSpacing);
    buttons_->addWidget(settingsButton_);
    buttons_->addLayout(answers);
    column->addLayout(buttons_);
    proceed->setFocus();
    return section;
}

void PermissionsOnboardingView::render() {
    const bool granted = model_.isGranted();
    detail_->setText(QString::fromStdString(model_.detailText()));
    settingsButton_->setLabel(
        text(granted ? onboarding_text::permissionGranted : onboarding_text::openSystemSettings));
    settingsButton_->setSymbol(granted ? "checkmark.circle.fill" : "gear");
    settingsButton_->setTint(granted ? ButtonTint::success : ButtonTint::accent);
    settingsButton_->setEnabled(!granted);
    layOutButtons();
}

void PermissionsOnboardingView::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    layOutButtons();
}

void PermissionsOnboardingView::layOutButtons() {
    int width = (buttons_->count() - 1) * settingsSpacing;
    for (int i = 0; i < buttons_->count(); ++i)
        width += buttons_->itemAt(i)->sizeHint().width();
    const int room = std::min(viewport()->width(), contentWidth) - 2 * sidePadding;
    buttons_->setDirection(width <= room ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

} // namespace glimmerly
