#pragma once

#include "platform/linux/updates/UpdateDialogs.h"

#include <QPointer>
#include <QPushButton>
#include <QWidget>

#include <vector>

class QBoxLayout;

namespace glimmerly {

class UiProgressBar;
class UiLabel;

/// What the update window shows at a time.
struct UpdatePage {
    enum class Progress { none, busy, measured };
    struct Button {
        QString label;
        std::function<void()> action;
    };

    QString title;
    QString message{};
    const AppcastItem* notes = nullptr; ///< read while the page is made; none: the page has no notes
    Progress progress = Progress::none;
    /// From left to right; the last one is the one that Return chooses.
    std::vector<Button> buttons{};
    /// What closing the window means; empty: it cannot be closed.
    std::function<void()> dismiss{};
};

/// The one window of the updater.
class UpdateWindow : public QWidget {
public:
    UpdateWindow();

    void showPage(const UpdatePage& page, Prominence prominence);
    /// On a page with measured progress.
    void setProgress(DownloadProgress progress);
    void bringForward();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] QWidget* makeContent(const UpdatePage& page);
    [[nodiscard]] QLayout* makeHeader(const UpdatePage& page);
    void addProgress(QBoxLayout& column, UpdatePage::Progress progress);
    void addButtons(QBoxLayout& column, const UpdatePage& page);
    void present(Prominence prominence);
    /// As Return does.
    void press();
    /// Runs the action unless its page has been answered, or has given way to another, since `page` was
    /// `page_`: two clicks in a row may be delivered before anything else.
    void answer(std::uint64_t page, const std::function<void()>& action);

    QWidget* content_ = nullptr;
    UiProgressBar* progressBar_ = nullptr;
    UiLabel* progressText_ = nullptr;
    QPointer<QPushButton> default_;
    std::function<void()> dismiss_;
    std::uint64_t page_ = 0; ///< how many were shown and answered
};

} // namespace glimmerly
