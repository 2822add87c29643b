#include "bugreports/form/PlaceholderTextView.h"

#include "ui/UiColors.h"
#include "ui/UiText.h"

#include <QPainter>
#include <QTextBlock>
#include <QTextLayout>

namespace glimmerly {

namespace {

constexpr int horizontalInset = 5;
constexpr int verticalInset = 8;
constexpr int lineFragmentPadding = 5; // left and right of each line; the document has it above and below too

} // namespace

PlaceholderTextView::PlaceholderTextView(const QString& placeholder, QWidget* parent)
    : QPlainTextEdit(parent), placeholder_(placeholder) {
    setFont(uiFont(text_style::body));
    setTabChangesFocus(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    document()->setDocumentMargin(lineFragmentPadding);
    constexpr int vertical = verticalInset - lineFragmentPadding;
    setViewportMargins(horizontalInset, vertical, horizontalInset, vertical);
    // Qt (6.4) repaints the one line that was edited; the placeholder may have more.
    connect(this, &QPlainTextEdit::textChanged, viewport(), qOverload<>(&QWidget::update));
}

void PlaceholderTextView::setBoundText(const QString& text) {
    if (text != toPlainText())
        setPlainText(text);
}

void PlaceholderTextView::paintEvent(QPaintEvent* event) {
    const bool isComposing = !document()->firstBlock().layout()->preeditAreaText().isEmpty();
    if (document()->isEmpty() && !isComposing) {
        const QPointF origin = blockBoundingGeometry(document()->firstBlock()).topLeft() + contentOffset();
        QRectF room = viewport()->rect();
        room.setTopLeft(origin + QPointF(lineFragmentPadding, 0));
        room.setRight(room.right() - lineFragmentPadding);
        QPainter painter(viewport());
        painter.setPen(uiColors(*this).placeholder);
        painter.drawText(room, Qt::AlignTop | Qt::AlignLeft | Qt::TextWordWrap, placeholder_);
    }
    QPlainTextEdit::paintEvent(event);
}

} // namespace glimmerly
