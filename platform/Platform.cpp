#include "platform/Platform.h"

#include <cassert>

namespace glimmerly {

namespace {
Platform* currentPlatform = nullptr;
}

Platform& Platform::current() {
    assert(currentPlatform && "set in main before any service is used");
    return *currentPlatform;
}

void Platform::setCurrent(Platform& platform) {
    currentPlatform = &platform;
}

} // namespace glimmerly
