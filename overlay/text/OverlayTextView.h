#pragma once

#include "base/Geometry.h"

#include <QPointer>
#include <QTextEdit>
#include <QTimer>

#include <functional>
#include <optional>

namespace glimmerly {

class TextAnnotationHost;

/// The editor of one text annotation: plain text in one font and colour, never wrapped, never scrolled, with
/// a typing history of its own. It edits while it is first responder and takes no mouse otherwise.
class OverlayTextView : public QTextEdit {
public:
    /// At the right of the text: the caret behind the last character, and what reaches beyond it; points.
    static constexpr int caretRoom = 8;

    OverlayTextView(TextAnnotationHost& host, const QFont& font, const QColor& color, const QString& text,
                    QWidget* parent);

    /// Called with true when the editor takes the focus and with false when it gives it up.
    std::function<void(bool)> onFocusChanged;

    [[nodiscard]] QString string() const { return toPlainText(); }
    /// Replaces the whole text, which starts a new typing history.
    void setString(const QString& text);
    /// The colour of all text and of the caret.
    void setColor(const QColor& color);

    /// Takes the focus and edits; does nothing when it has it already.
    void becomeFirstResponder();
    /// Ends the editing, also while the window does not have the keyboard. Idempotent.
    void resignFirstResponder();
    [[nodiscard]] bool isFirstResponder() const { return isFirstResponder_; }

    /// Leaves no characters highlighted, with the caret behind what was.
    void collapseSelection();

    enum class HistoryStep { undo, redo };
    /// Takes back or repeats typing. False when there is nothing to, or the editor is not first responder.
    [[nodiscard]] bool performTypingStep(HistoryStep step);

    /// Only what lies inside `area` is painted; widget points, y down. None paints everything.
    void setPaintClip(std::optional<QRectF> area);

    /// The size of the text as it stands, what an input method is composing included, in points.
    [[nodiscard]] Size measuredText() const;
    /// The distance between two lines in points.
    [[nodiscard]] double lineHeight() const;
    /// The first line's glyphs in widget points, y down; an empty line is one line high and has no width.
    [[nodiscard]] QRectF firstLineRect() const;

    [[nodiscard]] QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void configure(const QFont& font);
    void pinScrollBars();
    void setEditing(bool editing);
    void restartCaret();
    void paintCaret(QPainter& painter) const;

    TextAnnotationHost* host_;
    std::optional<QRectF> paintClip_;
    QTimer caretTimer_;
    bool isFirstResponder_ = false;
    bool isCaretShown_ = false;
};

} // namespace glimmerly
