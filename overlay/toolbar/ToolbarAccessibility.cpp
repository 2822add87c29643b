#include "overlay/toolbar/ToolbarAccessibility.h"

#include "overlay/toolbar/OverlayToolbarView.h"
#include "overlay/toolbar/ToolbarGrabHandleView.h"

#include <QAccessibleWidget>

namespace glimmerly {
namespace {

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    if (auto* toolbar = dynamic_cast<OverlayToolbarView*>(object))
        return new QAccessibleWidget(toolbar, QAccessible::ToolBar);
    if (auto* handle = dynamic_cast<ToolbarGrabHandleView*>(object))
        return new QAccessibleWidget(handle, QAccessible::Grip);
    return nullptr;
}

} // namespace

void installToolbarAccessibility() {
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
}

} // namespace glimmerly
