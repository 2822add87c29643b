#include "platform/linux/updates/dialogs/UpdateWindow.h"

#include "platform/linux/updates/dialogs/ReleaseNotes.h"
#include "ui/UiButton.h"
#include "ui/UiProgressBar.h"
#include "ui/UiText.h"
#include "ui/UiTextFrame.h"
#include "ui/WindowPlacement.h"

#include <QApplication>
#include <QCloseEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QLocale>
#include <QVBoxLayout>

#include <utility>

namespace glimmerly {

namespace {

constexpr int windowWidth = 500; // points
constexpr int padding = 24;
constexpr int iconSide = 56;
constexpr int iconSpacing = 18;
constexpr int titleSpacing = 6;
constexpr int groupSpacing = 18;
constexpr int buttonSpacing = 8;
constexpr int notesHeight = 200;
constexpr int progressSteps = 1000;

QString sizeText(std::uint64_t bytes) {
    return QLocale().formattedDataSize(static_cast<qint64>(bytes), 1, QLocale::DataSizeSIFormat);
}

} // namespace

UpdateWindow::UpdateWindow() : QWidget(nullptr, Qt::Dialog) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
}

void UpdateWindow::showPage(const UpdatePage& page, Prominence prominence) {
    dismiss_ = page.dismiss;
    ++page_;
    setWindowTitle(page.title);
    // The old page may hold the button whose click this is.
    if (content_ != nullptr) {
        content_->hide();
        layout()->removeWidget(content_);
        content_->deleteLater();
    }
    content_ = makeContent(page);
    layout()->addWidget(content_);
    content_->show();
    layout()->activate();
    setFixedSize(windowWidth, layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(windowWidth)
                                                            : layout()->totalSizeHint().height());
    if (default_)
        default_->setFocus();
    present(prominence);
}

void UpdateWindow::present(Prominence prominence) {
    if (!isVisible())
        centerOnDisplayUnderMouse(*this);
    setAttribute(Qt::WA_ShowWithoutActivating, prominence == Prominence::quiet);
    show();
    if (prominence == Prominence::inFront)
        bringForward();
    else
        QApplication::alert(this); // which does nothing to the active window
}

void UpdateWindow::bringForward() {
    raise();
    activateWindow();
}

QWidget* UpdateWindow::makeContent(const UpdatePage& page) {
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(padding, padding, padding, padding);
    column->setSpacing(groupSpacing);
    column->addLayout(makeHeader(page));
    if (page.notes != nullptr && !page.notes->notes.empty()) {
        auto* notes = new ReleaseNotes(page.notes->notes, page.notes->notesFormat);
        auto* frame = new UiTextFrame(*notes);
        frame->setFixedHeight(notesHeight);
        column->addWidget(frame);
    }
    addButtons(*column, page);
    return content;
}

QLayout* UpdateWindow::makeHeader(const UpdatePage& page) {
    auto* row = new QHBoxLayout;
    row->setSpacing(iconSpacing);
    auto* icon = new QLabel;
    icon->setPixmap(QGuiApplication::windowIcon().pixmap(QSize(iconSide, iconSide), devicePixelRatioF()));
    icon->setFixedSize(iconSide, iconSide);
    row->addWidget(icon, 0, Qt::AlignTop);
    auto* titles = new QVBoxLayout;
    titles->setSpacing(titleSpacing);
    titles->addWidget(new UiLabel(page.title, text_style::title2));
    if (!page.message.isEmpty())
        titles->addWidget(new UiLabel(page.message, text_style::bodySecondary));
    addProgress(*titles, page.progress);
    titles->addStretch(1);
    row->addLayout(titles, 1);
    return row;
}

void UpdateWindow::addProgress(QBoxLayout& column, UpdatePage::Progress progress) {
    progressBar_ = nullptr;
    progressText_ = nullptr;
    if (progress == UpdatePage::Progress::none)
        return;
    progressBar_ = new UiProgressBar;
    progressBar_->setAccessibleName("Progress");
    progressBar_->setRange(0, progress == UpdatePage::Progress::busy ? 0 : progressSteps);
    column.addSpacing(titleSpacing);
    column.addWidget(progressBar_);
    if (progress == UpdatePage::Progress::measured) {
        progressText_ = new UiLabel(QString(), text_style::captionSecondary);
        column.addWidget(progressText_);
        setProgress({});
    }
}

void UpdateWindow::setProgress(DownloadProgress progress) {
    if (progressText_ == nullptr)
        return;
    const double part = progress.total == 0
                            ? 0
                            : static_cast<double>(progress.received) / static_cast<double>(progress.total);
    progressBar_->setValue(static_cast<int>(part * progressSteps));
    progressText_->setText(QString("%1 of %2").arg(sizeText(progress.received), sizeText(progress.total)));
}

void UpdateWindow::addButtons(QBoxLayout& column, const UpdatePage& page) {
    const auto& buttons = page.buttons;
    // What only interrupts is not what anybody should be led to.
    const auto defaultKind =
        page.progress == UpdatePage::Progress::none ? ButtonKind::prominent : ButtonKind::bordered;
    default_ = nullptr;
    if (buttons.empty())
        return;
    auto* row = new QHBoxLayout;
    row->setSpacing(buttonSpacing);
    constexpr std::size_t most = 2; // at the right; what is further from the usual stands apart
    std::size_t left = buttons.size();
    if (left <= most)
        row->addStretch(1);
    for (const auto& [label, action] : buttons) {
        const bool isDefault = --left == 0;
        auto* button = new UiButton(label, {.kind = isDefault ? defaultKind : ButtonKind::bordered});
        // It goes away with its page, which the action may take away.
        connect(
            button, &QPushButton::clicked, this, [this, page = page_, act = action] { answer(page, act); },
            Qt::QueuedConnection);
        row->addWidget(button);
        if (left == most)
            row->addStretch(1);
        if (isDefault)
            default_ = button;
    }
    column.addLayout(row);
}

void UpdateWindow::answer(std::uint64_t page, const std::function<void()>& action) {
    if (page != page_ || !action)
        return;
    ++page_;
    dismiss_ = {};
    action();
}

void UpdateWindow::keyPressEvent(QKeyEvent* event) {
    if (event->isAutoRepeat()) // or a key held down would answer the pages that follow too
        event->accept();
    else if (event->key() == Qt::Key_Escape)
        close();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        press();
    else
        QWidget::keyPressEvent(event);
}

void UpdateWindow::press() {
    if (auto* button = qobject_cast<QPushButton*>(focusWidget()))
        button->click();
    else if (default_)
        default_->click();
}

void UpdateWindow::closeEvent(QCloseEvent* event) {
    event->ignore(); // whoever is told decides
    answer(page_, std::exchange(dismiss_, {}));
}

} // namespace glimmerly
