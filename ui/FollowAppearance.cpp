#include "ui/FollowAppearance.h"

#include "ui/TooltipStyle.h"
#include "ui/UiColors.h"

#include <QApplication>

namespace glimmerly {

Observation followAppearance(Appearance& appearance) {
    const auto apply = [&appearance] { QApplication::setPalette(uiPalette(appearance.colorScheme())); };
    QApplication::setStyle(new TooltipStyle);
    apply();
    return appearance.observe(apply);
}

} // namespace glimmerly
