#pragma once

#include <QPointer>
#include <QWidget>

#include <vector>

class QScrollArea;

namespace glimmerly {

/// A form over a window, which cannot be used until the sheet has gone: the sheet covers it, the keyboard
/// stays within the form, and everything else in the window is disabled, though it looks as before. It lives
/// in the window, so it moves, hides and comes back with it.
class UiSheet : public QWidget {
public:
    /// Takes `content` over, as wide as that is fixed to be; it scrolls where the window is too low for it.
    /// The first thing in it that takes the keyboard gets it. Deleting the sheet gives it back, or to what
    /// comes next where that is no longer to be seen.
    UiSheet(QWidget& window, QWidget* content);
    ~UiSheet() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void place();
    void disableBelow();
    void giveFocusBack();

    QScrollArea* area_;
    QPointer<QWidget> focusBefore_;
    std::vector<QPointer<QWidget>> below_; ///< what the sheet has disabled
};

} // namespace glimmerly
