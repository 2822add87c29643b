#pragma once

#include "hotkeys/recorder/HotkeyRecorderButtonStyle.h"
#include "ui/SymbolImage.h"

#include <QAbstractButton>

#include <optional>
#include <string_view>

namespace glimmerly {

class DevicePixels;
class FocusVisibility;

/// One of the recorder's two buttons, with a text or a symbol on it.
class HotkeyRecorderSegment : public QAbstractButton {
public:
    struct Symbol {
        std::string_view name;
        double inset = 0; ///< points, on all sides
        const char* accessibleLabel = "";
    };

    explicit HotkeyRecorderSegment(HotkeyRecorderButtonStyle::Segment segment, QWidget* parent = nullptr);

    void setHighlighted(bool isHighlighted);
    void showText(const QString& text);
    void showSymbol(const Symbol& symbol);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override;

private:
    void paintText(QPainter& painter, const QColor& color) const;
    void paintSymbol(QPainter& painter, const DevicePixels& device, const QColor& color) const;

    HotkeyRecorderButtonStyle style_;
    std::string_view symbolName_;
    std::optional<SymbolImage> symbol_;
    double symbolInset_ = 0;
    FocusVisibility& focus_;
};

} // namespace glimmerly
