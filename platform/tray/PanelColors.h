#pragma once

#include <QColor>
#include <QPoint>

namespace glimmerly {

/// White or near-black, whichever reads better on `background`.
[[nodiscard]] QColor textColorOn(const QColor& background);

/// The colour on the screen at `globalPosition`, in Qt's coordinates; invalid where the screen cannot be
/// read.
[[nodiscard]] QColor screenColorAt(QPoint globalPosition);

/// The colour for a picture in a panel that draws status items itself and that nothing is known of. Panels
/// are dark unless the desktop paints them in the colours of its windows.
[[nodiscard]] QColor hostPanelTextColor();

/// The same for a picture in a menu that such a panel draws: a grey that reads on light and dark alike.
[[nodiscard]] QColor hostMenuTextColor();

} // namespace glimmerly
