#pragma once

#include "platform/linux/updates/UpdateDialogs.h"

#include <QString>

#include <memory>

namespace glimmerly {

class UpdateWindow;

/// The updater's dialogs as windows of the desktop.
class StandardUpdateDialogs final : public UpdateDialogs {
public:
    explicit StandardUpdateDialogs(const std::string& applicationName);
    ~StandardUpdateDialogs() override;
    StandardUpdateDialogs(const StandardUpdateDialogs&) = delete;
    StandardUpdateDialogs& operator=(const StandardUpdateDialogs&) = delete;

    void askForPermission(std::function<void(PermissionAnswer)> answer) override;
    void showChecking(std::function<void()> cancel) override;
    void showUpToDate(const std::string& currentVersion, NoUpdateReason reason,
                      std::function<void()> acknowledged) override;
    void showAvailable(const OfferedUpdate& update, Prominence prominence,
                       std::function<void(UpdateAnswer)> answer) override;
    void showDownloading(const AppcastItem& item, std::function<void()> cancel) override;
    void showProgress(DownloadProgress progress) override;
    void showReady(const AppcastItem& item, ReadyNews news, Prominence prominence,
                   std::function<void(ReadyAnswer)> answer) override;
    void showInstalling(const AppcastItem& item) override;
    void showError(const Error& error, Prominence prominence,
                   std::function<void(ErrorAnswer)> answer) override;
    void openPage(const std::string& url) override;
    void bringForward() override;
    void close() override;

    /// None while nothing is shown.
    [[nodiscard]] UpdateWindow* window() const { return window_.get(); }

private:
    [[nodiscard]] UpdateWindow& shownWindow();
    [[nodiscard]] QString versionName(const AppcastItem& item) const;

    QString name_;
    std::unique_ptr<UpdateWindow> window_;
};

} // namespace glimmerly
