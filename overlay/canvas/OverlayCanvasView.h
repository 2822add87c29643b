#pragma once

#include "overlay/backing/OverlayCaptureBackingImage.h"
#include "overlay/drawing/AnnotationDrawing.h"
#include "overlay/drawing/SelectionScene.h"
#include "overlay/model/AnnotationEditor.h"
#include "overlay/model/AnnotationPalette.h"
#include "overlay/model/Selection.h"
#include "overlay/text/TextAnnotationViews.h"
#include "overlay/toolbar/OverlayCanvasToolbarLayout.h"

#include <QImage>
#include <QWidget>

#include <filesystem>
#include <functional>
#include <optional>

namespace glimmerly {

class OverlayToolbarView;
class Pasteboard;

/// What the canvas uses of the desktop.
struct OverlayCanvasServices {
    const Screens& screens;
    Pasteboard& pasteboard;
};

/// The one full-screen view of the overlay: draws the frozen capture with the selection and the annotations
/// over it, carries the texts' views and the toolbar, and receives every mouse event. Its own geometry is in
/// points with the origin at the bottom-left, whatever whole size the widget has; the widget must stand at
/// the overlay window's top-left corner.
class OverlayCanvasView : public QWidget {
public:
    /// Shows the capture file at `captureImageURL` on a canvas of the size of `frame`, in points: the target
    /// screen's size, 2 points taller. A capture that cannot be read is logged and leaves the canvas black.
    OverlayCanvasView(std::filesystem::path captureImageURL, Rect frame, OverlayCanvasServices services,
                      QWidget* parent = nullptr);
    ~OverlayCanvasView() override;

    /// The toolbar's last three buttons, for the owner to set once; called after any text editing has ended.
    std::function<void()> onClose;
    std::function<void()> onDownload;
    std::function<void()> onDone;

    [[nodiscard]] Rect bounds() const { return bounds_; }
    /// As it stands, also while it is being drawn; may be smaller than what can be exported.
    [[nodiscard]] std::optional<Rect> selectionRect() const { return selection_.rect(); }
    [[nodiscard]] const AnnotationEditor& annotations() const { return annotations_; }
    [[nodiscard]] const TextAnnotationViews& textViews() const { return textViews_; }
    [[nodiscard]] OverlayToolbarView& toolbar() const { return *toolbarView_; }

    /// The selected part of the capture at its full resolution with the annotations in it; none without a
    /// selection of 2 × 2 points or without a capture.
    [[nodiscard]] std::optional<Bitmap> croppedSelectionImage() const;
    /// Puts that picture on the general pasteboard, one point a pixel. False when there is none or the
    /// pasteboard refuses it.
    [[nodiscard]] bool writeCroppedImageToPasteboard();

    /// Takes back, or repeats, the last change of the annotations. False when there is none.
    bool performUndo();
    bool performRedo();
    /// Makes the canvas first responder if a text is being edited.
    void endTextEditing() { textViews_.endTextEditing(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// What a drag does, chosen when the mouse goes down: the first of these whose test holds. A press on a
    /// text's visible part comes before all others, as the text's view lies above the canvas.
    enum class MouseMode {
        textAnnotation,
        toolbar,
        selectionResize,
        annotationInteraction,
        drawing,
        textCreation,
        selectionCreation,
        nothing
    };

    // Mouse
    void mouseDown(Point p);
    void mouseDragged(Point p);
    void mouseUp(Point p);
    void mouseMoved(Point p);
    [[nodiscard]] MouseMode beginMouseMode(Point p);
    [[nodiscard]] bool beginSelectionResize(Point p);
    [[nodiscard]] bool beginAnnotationInteraction(Point p);
    [[nodiscard]] std::optional<MouseMode> beginDrawing(Point p);
    [[nodiscard]] bool isOverToolbar(Point p) const;
    [[nodiscard]] bool mayDrawNewSelection() const;
    void updatePositionTag(Point p);
    void updateCursor(Point p);
    [[nodiscard]] std::optional<Qt::CursorShape> cursorShapeAt(Point p) const;
    [[nodiscard]] Qt::CursorShape cursorForHit(const AnnotationHit& hit) const;

    // Annotations
    void connectTextViews();
    void addAnnotation(const OverlayAnnotation& annotation, TextAnnotationViews::Focus focus);
    void selectAnnotation(const Uuid& id);
    void clearAnnotationSelection();
    void selectionOfAnnotationsChanged();
    void recolorSelectedAnnotation(const Color& color);
    void annotationListChanged();
    void finishTextEditing(const Uuid& id);
    void updateAnnotationText(const Uuid& id, const std::string& text);
    [[nodiscard]] std::optional<AnnotationHit> annotationHitAt(Point p) const;
    [[nodiscard]] bool isInsideCompletedSelection(Point p) const;
    void textMouseDown(const Uuid& id, Point p);
    void textMouseDragged(Point p);
    void textMouseUp();
    void clickText(const Uuid& id);
    void dragAnnotation(Point p);

    // Toolbar
    void installToolbar();
    void layoutToolbar();
    void moveToolbarBy(double dx, double dy);
    void placeToolbar(Point origin);
    void syncToolbarToAnnotation(const OverlayAnnotation& annotation);
    void toolbarColorChanged(const std::optional<AnnotationColorOption>& option);

    // Drawing
    void updateScene();
    void drawBackground(const PixelSurface& surface) const;
    void drawScene(const PixelSurface& surface) const;
    void drawText(QPainter& painter, const OverlayAnnotation& annotation, const PixelMapping& mapping) const;
    [[nodiscard]] QRect widgetRect(const Rect& frame) const;

    std::filesystem::path captureImageURL_;
    OverlayCanvasServices services_;
    Rect bounds_;
    OverlayCaptureBackingImage backing_;
    CanvasPixelGrid grid_;
    PixelMapping windowPixels_; ///< of the canvas's points on the overlay window
    QImage background_;         ///< over the expanded picture's pixels
    Selection selection_;
    MouseMode mouseMode_ = MouseMode::nothing;
    std::optional<Point> lastCrosshairLocationForPositionTag_;

    AnnotationEditor annotations_;
    TextAnnotationViews textViews_;
    std::optional<Uuid> pendingTextDragAnnotationID_;
    std::optional<Point> pendingTextDragStart_;
    bool pendingTextWasAlreadySelectedAtMouseDown_ = false;

    OverlayToolbarView* toolbarView_ = nullptr; ///< a child
    Rect toolbarFrame_;                         ///< where it stands, also while hidden; canvas points
    OverlayCanvasToolbarLayout toolbarLayout_;
    std::optional<SelectionTool> toolbarSelectedTool_;
    std::optional<AnnotationColorOption> toolbarSelectedColor_;

    // What is on the screen, or will be after the repaint that was asked for
    SelectionScene scene_;
    AnnotationScene annotationScene_;
};

} // namespace glimmerly
