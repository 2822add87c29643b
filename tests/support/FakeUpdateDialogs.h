#pragma once

#include "platform/linux/updates/UpdateDialogs.h"

#include <optional>
#include <string>
#include <vector>

namespace glimmerly {

/// Writes down what the user is shown; a test answers through the callbacks.
class FakeUpdateDialogs : public UpdateDialogs {
public:
    void askForPermission(std::function<void(PermissionAnswer)> answer) override {
        shown = "permission";
        permission = std::move(answer);
    }
    void showChecking(std::function<void()> cancelled) override {
        shown = "checking";
        acknowledge = std::move(cancelled);
    }
    void showUpToDate(const std::string&, NoUpdateReason, std::function<void()> acknowledged) override {
        shown = "up to date";
        acknowledge = std::move(acknowledged);
    }
    void showAvailable(const OfferedUpdate& update, Prominence how,
                       std::function<void(UpdateAnswer)> answer) override {
        shown = "available " + update.item.version;
        prominence = how;
        offer = std::move(answer);
    }
    void showDownloading(const AppcastItem&, std::function<void()> cancelled) override {
        shown = "downloading";
        acknowledge = std::move(cancelled);
    }
    void showProgress(DownloadProgress now) override { progress = now; }
    void showReady(const AppcastItem&, ReadyNews news, Prominence how,
                   std::function<void(ReadyAnswer)> answer) override {
        shown = news == ReadyNews::accepted ? "ready" : "ready, unheard of";
        prominence = how;
        ready = std::move(answer);
    }
    void showInstalling(const AppcastItem&) override { shown = "installing"; }
    void showError(const Error& error, Prominence how, std::function<void(ErrorAnswer)> answer) override {
        prominence = how;
        shown = "error " + std::to_string(error.code());
        acknowledge = [answer] { answer(ErrorAnswer::acknowledged); };
        choosePage = [answer] { answer(ErrorAnswer::openDownloadPage); };
    }
    void openPage(const std::string& url) override { page = url; }
    void bringForward() override { ++broughtForward; }
    void close() override { shown = "nothing"; }

    std::string shown = "nothing";
    std::optional<Prominence> prominence;
    DownloadProgress progress;
    std::string page;
    int broughtForward = 0;
    std::function<void(PermissionAnswer)> permission;
    std::function<void(UpdateAnswer)> offer;
    std::function<void(ReadyAnswer)> ready;
    std::function<void()> choosePage;
    std::function<void()> acknowledge; ///< or cancel, whatever the dialog has
};

} // namespace glimmerly
