#pragma once

#include <QBoxLayout>

namespace glimmerly {

/// A layout of that kind in `widget`, or of its own when that is null, with `spacing` points between its
/// items and no margins: what surrounds it brings those.
template <typename Layout>
[[nodiscard]] Layout* tightLayout(QWidget* widget, int spacing) {
    auto* layout = new Layout(widget);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    return layout;
}

} // namespace glimmerly
