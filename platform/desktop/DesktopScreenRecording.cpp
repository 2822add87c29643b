#include "platform/desktop/DesktopScreenRecording.h"

#include "platform/desktop/PrivacySettings.h"
#include "ui/QtConversions.h"

#include <cstdlib>
#include <string_view>
#include <utility>

namespace glimmerly {

namespace {

// The first may have to start the store; the others are asked for every second or so.
constexpr std::chrono::milliseconds firstAnswer(500);
constexpr std::chrono::milliseconds laterAnswers(50);

bool isWaylandSession() {
    const char* type = std::getenv("XDG_SESSION_TYPE");
    return type && std::string_view(type) == "wayland";
}

} // namespace

DesktopScreenRecording::DesktopScreenRecording(const std::string& bundleIdentifier)
    : bundleIdentifier_(bundleIdentifier) {
    if (isWaylandSession())
        store_.emplace(QDBusConnection::sessionBus(), toQString(bundleIdentifier));
}

// Windows here have no layers, so none can be told to be a status item.

std::optional<std::vector<ListedWindow>> DesktopScreenRecording::onScreenWindows() const {
    return std::vector<ListedWindow>();
}

std::optional<WindowDescription> DesktopScreenRecording::description(std::uint32_t) const {
    return std::nullopt;
}

bool DesktopScreenRecording::preflight() const {
    if (!store_)
        return true;
    // A store that has answered once and is too busy now has not changed its mind.
    const bool isFirst = !std::exchange(hasAsked_, true);
    if (const auto word = store_->screenshot(isFirst ? firstAnswer : laterAnswers);
        word != StoredPermission::unknown)
        lastWord_ = word;
    return lastWord_ != StoredPermission::withheld;
}

void DesktopScreenRecording::openSettingsPage() {
    openPrivacySettings(bundleIdentifier_);
}

} // namespace glimmerly
