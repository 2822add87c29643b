#pragma once

#include "base/Geometry.h"
#include "base/Uuid.h"

#include <QColor>
#include <QWidget>

#include <functional>
#include <optional>

namespace glimmerly {

class OverlayTextView;
class TextAnnotationHost;

/// One text annotation on the canvas: the editor with a frame around it that shows while the annotation is
/// selected or edited. It grows with the text and keeps `anchorInCanvas` at the left middle of the first
/// line. All geometry but what is said otherwise is the canvas's: points, y up.
class OverlayGrowingTextAnnotationView : public QWidget {
public:
    OverlayGrowingTextAnnotationView(Point anchor, Uuid id, const QColor& color, const QFont& font,
                                     const QString& text, TextAnnotationHost& host, QWidget* canvas);

    /// Called when the user has changed the text, not by `setString`.
    std::function<void(const QString&)> onTextChanged;
    /// Called with true when the editing starts and with false when it ends.
    std::function<void(bool)> onFocusChanged;

    [[nodiscard]] Uuid annotationID() const { return annotationID_; }
    [[nodiscard]] OverlayTextView& textView() const { return *textView_; }
    [[nodiscard]] bool isEditing() const { return isEditing_; }
    [[nodiscard]] bool isCanvasSelected() const { return isCanvasSelected_; }
    [[nodiscard]] Point anchorInCanvas() const { return anchorInCanvas_; }
    /// Where the view stands, in canvas points.
    [[nodiscard]] const Rect& frameInCanvas() const { return frameInCanvas_; }

    void setCanvasSelected(bool selected);
    void setAnchorInCanvas(Point anchor);
    void setString(const QString& text);
    void setAnnotationColor(const QColor& color);

    /// Shows only what lies inside `part`, canvas points; none hides the view.
    void setVisiblePart(std::optional<Rect> part);

    /// Fits the view to its text and puts the anchor where it belongs.
    void layoutTextView();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool forwardToEditor(const QMouseEvent& event);
    void textViewFocusChanged(bool focused);

    Point anchorInCanvas_;
    TextAnnotationHost* host_;
    QColor annotationColor_;
    OverlayTextView* textView_;
    Uuid annotationID_;
    Rect frameInCanvas_;
    std::optional<Rect> visiblePart_;
    bool isCanvasSelected_ = false;
    bool isEditing_ = false;
};

} // namespace glimmerly
