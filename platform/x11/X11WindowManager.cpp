#include "platform/x11/X11WindowManager.h"

#include "platform/x11/X11Properties.h"

namespace glimmerly {

X11WindowManager::X11WindowManager(std::unique_ptr<X11Connection> connection)
    : connection_(std::move(connection)) {}

std::string X11WindowManager::name() const {
    const xcb_window_t window = x11_properties::value(*connection_, connection_->root(),
                                                      connection_->atom("_NET_SUPPORTING_WM_CHECK"));
    return window == XCB_WINDOW_NONE
               ? std::string()
               : x11_properties::text(*connection_, window, connection_->atom("_NET_WM_NAME"));
}

std::string X11WindowManager::openboxConfigurationFile() const {
    return x11_properties::text(*connection_, connection_->root(), connection_->atom("_OB_CONFIG_FILE"));
}

} // namespace glimmerly
