#include "capture/permission/ScreenRecordingPermission.h"

#include "diagnostics/GlimmerlyLog.h"
#include "platform/Platform.h"
#include "platform/ScreenCapture.h"
#include "platform/ScreenRecordingAccess.h"

#include <unistd.h>

namespace glimmerly {

namespace {

std::string truthText(bool value) {
    return value ? "true" : "false";
}

} // namespace

ScreenRecordingPermission::ScreenRecordingPermission(ScreenRecordingAccess& access,
                                                     ScreenCapture& screenCapture, std::int32_t ownProcess)
    : access_(access), screenCapture_(screenCapture), ownProcess_(ownProcess) {}

ScreenRecordingPermission& ScreenRecordingPermission::shared() {
    static auto* const instance = new ScreenRecordingPermission(
        Platform::current().screenRecording, Platform::current().screenCapture, ::getpid());
    return *instance;
}

std::vector<std::uint32_t> ScreenRecordingPermission::statusBarWindows() const {
    std::vector<std::uint32_t> numbers;
    for (const auto& window : access_.onScreenWindows().value_or(std::vector<ListedWindow>())) {
        if (window.number && window.layer == statusItemWindowLayer)
            numbers.push_back(*window.number);
    }
    return numbers;
}

bool ScreenRecordingPermission::isGranted() const {
    const auto windows = statusBarWindows();
    GlimmerlyLog::debug(log_category::screenRecordingPermission,
                        "Checking menu bar status windows for title access",
                        {{"windowCount", std::to_string(windows.size())}});
    for (const auto number : windows) {
        const auto window = access_.description(number);
        if (!window || !window->number || !window->ownerProcess || window->ownerProcess == ownProcess_)
            continue;
        const bool granted = window->title.has_value();
        GlimmerlyLog::debug(log_category::screenRecordingPermission, "Probed menu bar window",
                            {{"windowID", std::to_string(*window->number)},
                             {"ownerPID", std::to_string(*window->ownerProcess)},
                             {"ownerName", window->ownerName.value_or("nil")},
                             {"title", window->title.value_or("nil")},
                             {"granted", truthText(granted)}});
        return granted;
    }
    const bool preflight = access_.preflight();
    GlimmerlyLog::debug(log_category::screenRecordingPermission,
                        "No suitable non-owned menu bar windows; using CGPreflight fallback",
                        {{"preflight", truthText(preflight)}});
    return preflight;
}

void ScreenRecordingPermission::requestAccess() {
    GlimmerlyLog::debug(log_category::screenRecordingPermission,
                        "Requesting screen capture access via ScreenCaptureKit");
    // Asking what there is to capture is the request; the answer does not matter.
    screenCapture_.fetchShareableDisplays([](const auto&) {});
    access_.openSettingsPage();
}

} // namespace glimmerly
