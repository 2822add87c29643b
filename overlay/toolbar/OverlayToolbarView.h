#pragma once

#include "overlay/model/AnnotationPalette.h"
#include "overlay/model/SelectionTool.h"
#include "overlay/toolbar/ToolbarButtonGroup.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

class QHBoxLayout;
class QSpacerItem;

namespace glimmerly {

class ToolbarGrabHandleView;
class ToolbarShadowView;

/// The floating bar with the drawing tools, the colours and the actions. It knows only which buttons are lit
/// and reports every choice; its shadow is a sibling that it brings along. At most one tool and one colour
/// are lit, and a colour whenever a tool is. It never takes the keyboard focus, and presses beside its
/// buttons go on to its parent.
class OverlayToolbarView : public QWidget {
public:
    enum class ToolbarActionType { undo, redo, close, download, done };

    /// 509 by 44 points, as its contents add up.
    explicit OverlayToolbarView(QWidget* parent = nullptr);
    ~OverlayToolbarView() override;
    Q_DISABLE_COPY_MOVE(OverlayToolbarView)

    /// For the owner to set once; one that is not set is skipped. Deltas are points, y upwards.
    std::function<void(bool isDragging)> onHandleDragStateChanged;
    std::function<void(double dx, double dy)> onHandleDragDelta;
    std::function<void(std::optional<SelectionTool>)> onToolChanged;
    std::function<void(std::optional<AnnotationColorOption>)> onColorChanged;
    std::function<void()> onUndoTapped;
    std::function<void()> onRedoTapped;
    std::function<void()> onCloseTapped;
    std::function<void()> onDownloadTapped;
    std::function<void()> onDoneTapped;

    /// Lights that tool alone and reports it; with none, every tool goes dark and nothing is reported.
    void setSelectedTool(std::optional<SelectionTool> tool);
    /// Lights the colour of that id alone and reports it; with none or an unknown id, every colour goes dark
    /// and nothing is reported.
    void setSelectedColor(std::optional<std::string_view> id);

protected:
    void enterEvent(QEnterEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void addGrabHandle();
    void addSeparator();
    void addToolGroup();
    void addColorGroup();
    void addActionGroup();
    ToolbarIconButton& addButton(QHBoxLayout& group, const ToolbarIconButton::Description& description);

    void handleToolButtonPressed(SelectionTool tool);
    void handleColorButtonPressed(const AnnotationColorOption& option);
    void handleActionButtonPressed(ToolbarActionType action) const;

    [[nodiscard]] Qt::CursorShape cursorAt(QPoint point) const;
    void refreshCursor(QPointF point);

    QHBoxLayout* stack_;
    ToolbarGrabHandleView* grabHandle_ = nullptr;
    std::vector<QSpacerItem*> separators_; ///< owned by the layout
    ToolbarButtonGroup<SelectionTool> tools_;
    ToolbarButtonGroup<AnnotationColorOption> colors_;
    QPointer<ToolbarShadowView> shadow_;
};

} // namespace glimmerly
