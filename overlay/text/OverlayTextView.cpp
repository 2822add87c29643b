#include "overlay/text/OverlayTextView.h"

#include "overlay/text/TextAnnotationHost.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleHints>
#include <QTextBlock>
#include <QTextLayout>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace glimmerly {

namespace {

constexpr double caretWidth = 1.5;

/// What a block shows: its text with what an input method is composing in it.
QString shownText(const QTextBlock& block) {
    QString text = block.text();
    if (const QTextLayout* layout = block.layout(); layout && !layout->preeditAreaText().isEmpty())
        text.insert(layout->preeditAreaPosition(), layout->preeditAreaText());
    return text;
}

} // namespace

OverlayTextView::OverlayTextView(TextAnnotationHost& host, const QFont& font, const QColor& color,
                                 const QString& text, QWidget* parent)
    : QTextEdit(parent), host_(&host) {
    configure(font);
    setColor(color);
    setString(text);
    pinScrollBars();
    setReadOnly(true);
    setTextInteractionFlags(Qt::NoTextInteraction);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoMousePropagation); // what it leaves alone is nobody else's

    connect(&caretTimer_, &QTimer::timeout, this, [this] {
        isCaretShown_ = !isCaretShown_;
        viewport()->update();
    });
    connect(this, &QTextEdit::cursorPositionChanged, this, &OverlayTextView::restartCaret);
}

void OverlayTextView::configure(const QFont& font) {
    setAccessibleName(QStringLiteral("Text annotation"));
    setFont(font);
    setAcceptRichText(false);
    setLineWrapMode(QTextEdit::NoWrap);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus); // the canvas alone decides who is first responder
    setContextMenuPolicy(Qt::NoContextMenu);
    setViewportMargins(0, 0, 0, 0);
    setCursorWidth(0); // Qt's caret inverts what is under it; ours has the annotation's colour
    document()->setDocumentMargin(0);
    document()->setUndoRedoEnabled(true);
    setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
}

void OverlayTextView::pinScrollBars() {
    for (QScrollBar* bar : {horizontalScrollBar(), verticalScrollBar()}) {
        // The view grows with its text, a moment after Qt has looked for the caret.
        connect(bar, &QScrollBar::rangeChanged, bar, [bar](int, int maximum) {
            if (maximum != 0)
                bar->setRange(0, 0);
        });
    }
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void OverlayTextView::setString(const QString& text) {
    setPlainText(text);
}

void OverlayTextView::setColor(const QColor& color) {
    // Through the palette and not the text's formats, which would enter the typing history.
    QPalette colors = palette();
    colors.setColor(QPalette::Text, color);
    setPalette(colors);
    viewport()->update();
}

void OverlayTextView::becomeFirstResponder() {
    setReadOnly(false); // before the focus, or the input method is not told of the editor
    setFocus(Qt::OtherFocusReason);
    setEditing(true);
}

void OverlayTextView::resignFirstResponder() {
    setEditing(false);
}

void OverlayTextView::setEditing(bool editing) {
    if (isFirstResponder_ == editing)
        return;
    isFirstResponder_ = editing;
    setReadOnly(!editing);
    setTextInteractionFlags(editing ? Qt::TextEditorInteraction : Qt::NoTextInteraction);
    setAttribute(Qt::WA_TransparentForMouseEvents, !editing);
    host_->collapseOtherTextSelections(editing ? this : nullptr);
    restartCaret();
    if (onFocusChanged)
        onFocusChanged(editing);
}

void OverlayTextView::collapseSelection() {
    QTextCursor cursor = textCursor();
    if (!cursor.hasSelection())
        return;
    cursor.setPosition(cursor.selectionEnd());
    setTextCursor(cursor);
}

bool OverlayTextView::performTypingStep(HistoryStep step) {
    const bool isPossible =
        step == HistoryStep::redo ? document()->isRedoAvailable() : document()->isUndoAvailable();
    if (!isFirstResponder_ || !isPossible)
        return false;
    if (step == HistoryStep::redo)
        redo();
    else
        undo();
    return true;
}

void OverlayTextView::setPaintClip(std::optional<QRectF> area) {
    if (paintClip_ == area)
        return;
    paintClip_ = area;
    viewport()->update();
}

Size OverlayTextView::measuredText() const {
    const QFontMetricsF metrics(font());
    double widest = 0;
    int lines = 0;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        const auto shown = shownText(block).split(QChar::LineSeparator);
        for (const QString& line : shown) {
            widest = std::max(widest, metrics.horizontalAdvance(line));
            ++lines;
        }
    }
    // Glyphs from a fallback font, such as emoji, can make a line higher than the font's own.
    return {widest, std::max(lines * lineHeight(), document()->size().height())};
}

double OverlayTextView::lineHeight() const {
    return std::ceil(QFontMetricsF(font()).lineSpacing()); // whole points, as the document's own height
}

QRectF OverlayTextView::firstLineRect() const {
    const QTextBlock first = document()->begin();
    const QTextLayout* layout = first.layout();
    if (shownText(first).isEmpty() || layout->lineCount() == 0)
        return {0, 0, 0, lineHeight()};
    return layout->lineAt(0).naturalTextRect().translated(layout->position());
}

void OverlayTextView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    if (paintClip_)
        painter.setClipRect(*paintClip_);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette = palette();
    context.clip = event->rect();
    if (const QTextCursor cursor = textCursor(); cursor.hasSelection()) {
        QAbstractTextDocumentLayout::Selection highlight;
        highlight.cursor = cursor;
        highlight.format.setBackground(palette().brush(QPalette::Active, QPalette::Highlight));
        highlight.format.setForeground(palette().brush(QPalette::Active, QPalette::HighlightedText));
        context.selections.append(highlight);
    }
    document()->documentLayout()->draw(&painter, context);
    paintCaret(painter);
}

void OverlayTextView::paintCaret(QPainter& painter) const {
    if (!isCaretShown_)
        return;
    const QRect place = cursorRect();
    painter.fillRect(QRectF(place.x(), place.y(), caretWidth, place.height()),
                     palette().color(QPalette::Text));
}

void OverlayTextView::restartCaret() {
    isCaretShown_ = isFirstResponder_ && hasFocus();
    const int flashTime = QGuiApplication::styleHints()->cursorFlashTime();
    if (isCaretShown_ && flashTime > 1)
        caretTimer_.start(flashTime / 2);
    else
        caretTimer_.stop();
    viewport()->update();
}

void OverlayTextView::focusInEvent(QFocusEvent* event) {
    QTextEdit::focusInEvent(event);
    setEditing(true);
    restartCaret();
}

void OverlayTextView::focusOutEvent(QFocusEvent* event) {
    QTextEdit::focusOutEvent(event);
    // A window that loses the keyboard keeps its first responder.
    const bool isWindowsDoing =
        event->reason() == Qt::ActiveWindowFocusReason || event->reason() == Qt::PopupFocusReason;
    if (!isWindowsDoing)
        setEditing(false);
    restartCaret();
}

void OverlayTextView::keyPressEvent(QKeyEvent* event) {
    // Qt would type the letter of a combination with the Super key.
    if (event->modifiers().testFlag(Qt::MetaModifier))
        event->ignore();
    else
        QTextEdit::keyPressEvent(event);
}

QVariant OverlayTextView::inputMethodQuery(Qt::InputMethodQuery query) const {
    QVariant answer = QTextEdit::inputMethodQuery(query);
    if (query != Qt::ImCursorRectangle)
        return answer;
    // Qt's own caret has no width, and an empty place is not told to the input method.
    return answer.toRectF().adjusted(0, 0, std::ceil(caretWidth), 0);
}

void OverlayTextView::resizeEvent(QResizeEvent* event) {
    QTextEdit::resizeEvent(event);
    if (document()->textWidth() > 0) // as Qt lays out lines that end at the right, which end before that room
        document()->setTextWidth(width() - caretRoom);
}

void OverlayTextView::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

} // namespace glimmerly
