#include "overlay/text/OverlayGrowingTextAnnotationView.h"

#include "overlay/text/OverlayTextView.h"
#include "overlay/text/TextAnnotationHost.h"

#include <QApplication>
#include <QClipboard>
#include <QFontMetricsF>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPainter>
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace glimmerly {
namespace {

constexpr double canvasHeight = 600;
constexpr double frameAndInset = 8;

/// A bare canvas for text views.
class Canvas : public QWidget, public TextAnnotationHost {
public:
    Canvas() {
        resize(800, static_cast<int>(canvasHeight));
        setFocusPolicy(Qt::StrongFocus);
        font_.setPixelSize(20);
        show();
        activateWindow();
    }

    QRect widgetGeometry(const Rect& frame) const override {
        return {static_cast<int>(std::lround(frame.minX())),
                static_cast<int>(std::lround(canvasHeight - frame.maxY())),
                static_cast<int>(std::ceil(frame.width)), static_cast<int>(std::ceil(frame.height))};
    }
    void collapseOtherTextSelections(const OverlayTextView*) override {}

    OverlayGrowingTextAnnotationView& add(const QString& text, Point anchor = {100, 300}) {
        auto* view =
            new OverlayGrowingTextAnnotationView(anchor, Uuid::generate(), Qt::red, font_, text, *this, this);
        view->setVisiblePart(Rect{0, 0, 800, canvasHeight});
        return *view;
    }

    [[nodiscard]] double lineHeight() const { return std::ceil(QFontMetricsF(font_).lineSpacing()); }

private:
    QFont font_;
};

void type(OverlayTextView& editor, const QString& text) {
    for (const QChar character : text) {
        const int key = character == '\n' ? Qt::Key_Return : 0;
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, character == '\n' ? "\r" : QString(character));
        QApplication::sendEvent(&editor, &press);
    }
}

TEST(OverlayGrowingTextAnnotationView, HangsOnItsAnchorAndGrowsToTheRightAndDownward) {
    Canvas canvas;
    auto& view = canvas.add({});
    const Rect empty = view.frameInCanvas();
    const double height = canvas.lineHeight() + 2 * frameAndInset;
    EXPECT_EQ(empty, Rect(100 - frameAndInset, 300 - height / 2, 40 + 2 * frameAndInset, height));
    view.textView().becomeFirstResponder();
    type(view.textView(), "A rather long first line");
    const Rect oneLine = view.frameInCanvas();
    EXPECT_EQ(oneLine.minX(), empty.minX());
    EXPECT_GT(oneLine.width, 150);
    type(view.textView(), "\nsecond");
    const Rect twoLines = view.frameInCanvas();
    EXPECT_EQ(view.textView().string(), "A rather long first line\nsecond");
    EXPECT_DOUBLE_EQ(twoLines.maxY(), oneLine.maxY());
    EXPECT_NEAR(twoLines.height - oneLine.height, canvas.lineHeight(), 1);
}

TEST(OverlayGrowingTextAnnotationView, EveryKindOfTextFitsItsView) {
    Canvas canvas;
    for (const QString& text : {QString("plain"), QString("שלום עולם"), QString("e\u0301\u0302 combining"),
                                QString("👩‍👩‍👧 emoji"), QString("trailing spaces    "),
                                QString("a\r\nb\rc\nd"), QString("日本語のテキスト")}) {
        SCOPED_TRACE(text.toStdString());
        auto& view = canvas.add(text);
        const auto& editor = view.textView();
        EXPECT_LE(editor.firstLineRect().right(), editor.width() - OverlayTextView::caretRoom);
        EXPECT_LE(editor.document()->size().height(), editor.height());
        EXPECT_LE(editor.geometry().bottom(), view.height());
    }
}

TEST(OverlayGrowingTextAnnotationView, AnInputMethodsCompositionFitsAndIsNotYetText) {
    Canvas canvas;
    auto& view = canvas.add({});
    view.textView().becomeFirstResponder();
    const double before = view.frameInCanvas().width;
    QInputMethodEvent composing("にほんごのにゅうりょく", {});
    QApplication::sendEvent(&view.textView(), &composing);
    EXPECT_GT(view.frameInCanvas().width, before);
    EXPECT_EQ(view.textView().string(), "");
    QInputMethodQueryEvent place(Qt::ImCursorRectangle); // where the candidates are to appear
    QApplication::sendEvent(&view.textView(), &place);
    EXPECT_TRUE(place.value(Qt::ImCursorRectangle).toRect().isValid());
    QInputMethodEvent committed;
    committed.setCommitString("日本語");
    QApplication::sendEvent(&view.textView(), &committed);
    EXPECT_EQ(view.textView().string(), "日本語");
}

TEST(OverlayTextView, EditsOnlyWhileItIsFirstResponder) {
    Canvas canvas;
    auto& view = canvas.add("kept");
    std::vector<bool> focus;
    view.onFocusChanged = [&](bool focused) { focus.push_back(focused); };
    EXPECT_TRUE(view.textView().testAttribute(Qt::WA_TransparentForMouseEvents));
    view.textView().becomeFirstResponder();
    view.textView().becomeFirstResponder();
    EXPECT_TRUE(view.isEditing());
    canvas.setFocus();
    view.textView().resignFirstResponder();
    EXPECT_FALSE(view.isEditing());
    EXPECT_EQ(focus, (std::vector<bool>{true, false}));
    type(view.textView(), "x");
    EXPECT_EQ(view.textView().string(), "kept");
}

TEST(OverlayTextView, HasATypingHistoryOfItsOwn) {
    Canvas canvas;
    auto& first = canvas.add({});
    auto& second = canvas.add({});
    using Step = OverlayTextView::HistoryStep;
    first.textView().becomeFirstResponder();
    type(first.textView(), "one");
    EXPECT_FALSE(second.textView().performTypingStep(Step::undo));
    first.setAnnotationColor(Qt::blue); // no typing, so not undone
    EXPECT_TRUE(first.textView().performTypingStep(Step::undo));
    EXPECT_EQ(first.textView().string(), "");
    EXPECT_FALSE(first.textView().performTypingStep(Step::undo));
    EXPECT_TRUE(first.textView().performTypingStep(Step::redo));
    EXPECT_EQ(first.textView().string(), "one");
    first.textView().resignFirstResponder();
    EXPECT_FALSE(first.textView().performTypingStep(Step::undo));
}

TEST(OverlayTextView, PastesManyLinesAsPlainTextAndNeverScrolls) {
    Canvas canvas;
    auto& view = canvas.add({});
    view.textView().becomeFirstResponder();
    QApplication::clipboard()->setText("first\r\nsecond line that is longer\n\nfourth");
    view.textView().paste();
    EXPECT_EQ(view.textView().string(), "first\nsecond line that is longer\n\nfourth");
    EXPECT_EQ(view.textView().cursorRect(QTextCursor(view.textView().document())).topLeft(), QPoint(0, 0));
}

TEST(OverlayGrowingTextAnnotationView, ShowsOnlyItsVisiblePart) {
    Canvas canvas;
    auto& view = canvas.add("MMMMMMMM");
    view.setCanvasSelected(true);
    const auto rendered = [&] {
        QImage image(canvas.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        canvas.render(&image);
        return image;
    };
    canvas.setPalette(Qt::white);
    const QImage whole = rendered();
    view.setVisiblePart(Rect{0, 0, 130, canvasHeight});
    const QImage part = rendered();
    EXPECT_EQ(part.copy(0, 0, 130, part.height()), whole.copy(0, 0, 130, whole.height()));
    QImage blank(part.width() - 130, part.height(), part.format());
    blank.fill(Qt::white);
    EXPECT_EQ(part.copy(130, 0, blank.width(), blank.height()), blank);
    view.setVisiblePart(std::nullopt);
    EXPECT_TRUE(view.isHidden());
}

} // namespace
} // namespace glimmerly
