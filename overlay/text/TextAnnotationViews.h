#pragma once

#include "base/Uuid.h"
#include "overlay/model/OverlayAnnotation.h"
#include "overlay/text/TextAnnotationHost.h"

#include <QFont>

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>

class QWidget;

namespace glimmerly {

class OverlayGrowingTextAnnotationView;

/// The live views of all text annotations on a canvas: exactly one for each text in the list after every
/// change. All geometry is in canvas points.
class TextAnnotationViews : private TextAnnotationHost {
public:
    using Place = std::function<QRect(const Rect& frame)>;

    /// The views become children of `canvas`; `place` answers the widget rectangle that shows a frame.
    TextAnnotationViews(QWidget& canvas, Place place);
    ~TextAnnotationViews() override;

    /// The user typed: the text as it stands now, UTF-8.
    std::function<void(const Uuid& id, const std::string& text)> onTextChanged;
    /// The editor of that text has given up the focus.
    std::function<void(const Uuid& id)> onEditingEnded;

    enum class Focus { leave, take };
    /// Makes or updates the view of `annotation`, a text; with `take` it is edited at once.
    void ensureTextView(const OverlayAnnotation& annotation, Focus focus);
    /// Removes the views that no annotation of `list` has and ensures all others.
    void syncTextViews(std::span<const OverlayAnnotation> list);
    void removeTextView(const Uuid& id);

    void updateTextSelectionFlags(const std::optional<Uuid>& selectedID);
    /// Shows of each view only what lies inside `selection`; none hides all.
    void clipTextViewsToSelection(const std::optional<Rect>& selection);
    /// Stacks the views in list order, all of them below `front` if there is one.
    void restackTextViews(std::span<const OverlayAnnotation> list, QWidget* front) const;

    /// Whether the visible part of that text's view contains `point`.
    [[nodiscard]] bool textAnnotationContains(Point point, const Uuid& id) const;
    /// The topmost text of `list` whose visible part contains `point`.
    [[nodiscard]] std::optional<Uuid> topmostTextAnnotationAt(Point point,
                                                              std::span<const OverlayAnnotation> list) const;

    [[nodiscard]] OverlayGrowingTextAnnotationView* view(const Uuid& id) const;
    [[nodiscard]] std::size_t count() const { return views_.size(); }
    /// The text whose editor has the focus.
    [[nodiscard]] OverlayGrowingTextAnnotationView* editedView() const;
    /// Gives the focus to the canvas, which ends any editing.
    void endTextEditing();

private:
    [[nodiscard]] QRect widgetGeometry(const Rect& frame) const override { return place_(frame); }
    void collapseOtherTextSelections(const OverlayTextView* focused) override;

    OverlayGrowingTextAnnotationView& makeView(const OverlayAnnotation& annotation);
    void clip(OverlayGrowingTextAnnotationView& view) const;

    QWidget& canvas_;
    Place place_;
    QFont font_;
    std::optional<Rect> selection_;
    std::unordered_map<Uuid, OverlayGrowingTextAnnotationView*>
        views_; ///< owned by the canvas as its children
};

} // namespace glimmerly
