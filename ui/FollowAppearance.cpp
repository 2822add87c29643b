#include "ui/FollowAppearance.h"

#include "ui/UiColors.h"
#include "ui/UiWidgetStyle.h"

#include <QApplication>

namespace glimmerly {

Observation followAppearance(Appearance& appearance) {
    const auto apply = [&appearance] { QApplication::setPalette(uiPalette(appearance.colorScheme())); };
    QApplication::setStyle(new UiWidgetStyle);
    apply();
    return appearance.observe(apply);
}

} // namespace glimmerly
