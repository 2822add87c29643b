#pragma once

#include "platform/Updates.h"
#include "platform/linux/updates/UpdateWork.h"
#include "platform/linux/updates/feed/Appcast.h"

#include <functional>
#include <string>

namespace glimmerly {

enum class UpdateAnswer { install, later, skip, openDownloadPage };
enum class ErrorAnswer { acknowledged, openDownloadPage };
enum class ReadyAnswer { installAndRelaunch, later, skip };
enum class PermissionAnswer { check, doNotCheck };

/// Whether a dialog takes the keyboard, as one that the user asked for does.
enum class Prominence { inFront, quiet };

/// Whether the user has accepted the version that is ready, or hears of it only now.
enum class ReadyNews { accepted, unheardOf };

/// A newer version, as it is told to the user.
struct OfferedUpdate {
    AppcastItem item;
    std::string currentVersion;
    Replaceability replaceability{};
};

/// What the updater says to the user and hears back. One dialog at a time: each takes the place of the one
/// before. An answer comes once; closing a dialog is the answer that changes least. Main thread only.
class UpdateDialogs {
public:
    virtual ~UpdateDialogs() = default;

    virtual void askForPermission(std::function<void(PermissionAnswer)> answer) = 0;
    virtual void showChecking(std::function<void()> cancel) = 0;
    virtual void showUpToDate(const std::string& currentVersion, NoUpdateReason reason,
                              std::function<void()> acknowledged) = 0;
    virtual void showAvailable(const OfferedUpdate& update, Prominence prominence,
                               std::function<void(UpdateAnswer)> answer) = 0;
    virtual void showDownloading(const AppcastItem& item, std::function<void()> cancel) = 0;
    /// While downloading.
    virtual void showProgress(DownloadProgress progress) = 0;
    virtual void showReady(const AppcastItem& item, ReadyNews news, Prominence prominence,
                           std::function<void(ReadyAnswer)> answer) = 0;
    virtual void showInstalling(const AppcastItem& item) = 0;
    /// The download page is among the answers where the update can be installed by hand.
    virtual void showError(const Error& error, Prominence prominence,
                           std::function<void(ErrorAnswer)> answer) = 0;
    virtual void openPage(const std::string& url) = 0;
    /// Brings the dialog that is shown forward.
    virtual void bringForward() = 0;
    virtual void close() = 0;
};

} // namespace glimmerly
