#include "platform/linux/updates/dialogs/StandardUpdateDialogs.h"

#include "platform/linux/updates/UpdateError.h"
#include "platform/linux/updates/dialogs/UpdateWindow.h"
#include "ui/QtConversions.h"

#include <QDesktopServices>
#include <QUrl>

namespace glimmerly {

namespace {

/// An action that gives `answer` one of its answers.
template <typename Answer>
std::function<void()> giving(const std::function<void(Answer)>& answer, Answer value) {
    return [answer, value] { answer(value); };
}

QString whyUpToDate(NoUpdateReason reason, const QString& name, const QString& version) {
    switch (reason) {
    case NoUpdateReason::onNewerThanLatest:
        return QString("%1 %2 is newer than the newest version that is offered.").arg(name, version);
    case NoUpdateReason::systemIsTooOld:
        return QString("There is a newer version of %1, but it needs a newer system than this one. "
                       "You have %2.")
            .arg(name, version);
    case NoUpdateReason::unknown:
        return QString("No version of %1 for this computer is offered. You have %2.").arg(name, version);
    case NoUpdateReason::onLatestVersion:
    case NoUpdateReason::skipped:
        return QString("%1 %2 is the newest version that is offered.").arg(name, version);
    }
    return {};
}

const QString onDownloadPage = " The new version is on the download page.";

QString whatFailed(const Error& error) {
    if (isCode(error, UpdateErrorCode::notConfigured))
        return "No updates";
    if (isCode(error, UpdateErrorCode::feedUnreachable) || isCode(error, UpdateErrorCode::feedInvalid))
        return "The check for updates did not work";
    return "The update did not work";
}

QString whyByHand(Replaceability replaceability) {
    switch (replaceability) {
    case Replaceability::managedElsewhere:
        return "This copy was installed by the system’s package manager, which is how it is updated.";
    case Replaceability::inSharedFolder:
        return "This copy shares its folder with other files, so it cannot update itself.";
    case Replaceability::notExchangeable:
        return "This copy lies in a folder that cannot be replaced, so it cannot update itself.";
    case Replaceability::notWritable:
    case Replaceability::replaceable:
        break;
    }
    return "This copy lies in a folder that you cannot write to, so it cannot update itself.";
}

} // namespace

StandardUpdateDialogs::StandardUpdateDialogs(const std::string& applicationName)
    : name_(toQString(applicationName)) {}

StandardUpdateDialogs::~StandardUpdateDialogs() = default;

UpdateWindow& StandardUpdateDialogs::shownWindow() {
    if (!window_)
        window_ = std::make_unique<UpdateWindow>();
    return *window_;
}

QString StandardUpdateDialogs::versionName(const AppcastItem& item) const {
    return name_ + " " + toQString(item.displayVersion());
}

void StandardUpdateDialogs::askForPermission(std::function<void(PermissionAnswer)> answer) {
    const auto decline = giving(answer, PermissionAnswer::doNotCheck);
    shownWindow().showPage(
        {.title = "Check for updates automatically?",
         .message = QString("%1 can look for new versions by itself. It sends nothing about you or this "
                            "computer. You can always check by hand.")
                        .arg(name_),
         .buttons = {{"Don’t check", decline},
                     {"Check automatically", giving(answer, PermissionAnswer::check)}},
         .dismiss = decline},
        Prominence::quiet);
}

void StandardUpdateDialogs::showChecking(std::function<void()> cancel) {
    shownWindow().showPage({.title = "Checking for updates…",
                            .progress = UpdatePage::Progress::busy,
                            .buttons = {{"Cancel", cancel}},
                            .dismiss = cancel},
                           Prominence::inFront);
}

void StandardUpdateDialogs::showUpToDate(const std::string& currentVersion, NoUpdateReason reason,
                                         std::function<void()> acknowledged) {
    const bool isCurrent = reason != NoUpdateReason::systemIsTooOld && reason != NoUpdateReason::unknown;
    shownWindow().showPage({.title = isCurrent ? "You’re up to date!" : "No update for this system",
                            .message = whyUpToDate(reason, name_, toQString(currentVersion)),
                            .buttons = {{"OK", acknowledged}},
                            .dismiss = acknowledged},
                           Prominence::inFront);
}

void StandardUpdateDialogs::showAvailable(const OfferedUpdate& update, Prominence prominence,
                                          std::function<void(UpdateAnswer)> answer) {
    const bool canInstall = update.replaceability == Replaceability::replaceable;
    const QString critical =
        update.item.urgency == Urgency::critical ? QString("This is an important update. ") : QString();
    const QString question = canInstall ? QString("Would you like to install it now?")
                                        : whyByHand(update.replaceability) + onDownloadPage;
    UpdatePage page{.title = versionName(update.item) + " is available",
                    .message =
                        critical + QString("You have %1. ").arg(toQString(update.currentVersion)) + question,
                    .notes = &update.item,
                    .dismiss = giving(answer, UpdateAnswer::later)};
    if (update.item.urgency != Urgency::critical)
        page.buttons.push_back({"Skip this version", giving(answer, UpdateAnswer::skip)});
    page.buttons.push_back({"Remind me later", giving(answer, UpdateAnswer::later)});
    page.buttons.push_back(canInstall ? UpdatePage::Button{"Install", giving(answer, UpdateAnswer::install)}
                                      : UpdatePage::Button{"Open download page",
                                                           giving(answer, UpdateAnswer::openDownloadPage)});
    shownWindow().showPage(page, prominence);
}

void StandardUpdateDialogs::showDownloading(const AppcastItem& item, std::function<void()> cancel) {
    shownWindow().showPage({.title = "Downloading " + versionName(item) + "…",
                            .progress = UpdatePage::Progress::measured,
                            .buttons = {{"Cancel", cancel}},
                            .dismiss = cancel},
                           Prominence::inFront);
}

void StandardUpdateDialogs::showProgress(DownloadProgress progress) {
    if (window_)
        window_->setProgress(progress);
}

void StandardUpdateDialogs::showReady(const AppcastItem& item, ReadyNews news, Prominence prominence,
                                      std::function<void(ReadyAnswer)> answer) {
    const bool isNews = news == ReadyNews::unheardOf;
    UpdatePage page{.title = versionName(item) + " is ready to install",
                    .message = QString("%1 ends and starts again as the new version. Otherwise it is "
                                       "installed when you quit.")
                                   .arg(name_),
                    .notes = isNews ? &item : nullptr,
                    .dismiss = giving(answer, ReadyAnswer::later)};
    if (isNews && item.urgency != Urgency::critical)
        page.buttons.push_back({"Skip this version", giving(answer, ReadyAnswer::skip)});
    page.buttons.push_back({"Later", page.dismiss});
    page.buttons.push_back({"Install and relaunch", giving(answer, ReadyAnswer::installAndRelaunch)});
    shownWindow().showPage(page, prominence);
}

void StandardUpdateDialogs::showInstalling(const AppcastItem& item) {
    shownWindow().showPage(
        {.title = "Installing " + versionName(item) + "…", .progress = UpdatePage::Progress::busy},
        Prominence::inFront);
}

void StandardUpdateDialogs::showError(const Error& error, Prominence prominence,
                                      std::function<void(ErrorAnswer)> answer) {
    const auto acknowledged = giving(answer, ErrorAnswer::acknowledged);
    const bool byHand = canInstallByHand(error);
    UpdatePage page{.title = whatFailed(error),
                    .message = toQString(error.description()) + (byHand ? onDownloadPage : ""),
                    .buttons = {{byHand ? "Close" : "OK", acknowledged}},
                    .dismiss = acknowledged};
    if (byHand)
        page.buttons.push_back({"Open download page", giving(answer, ErrorAnswer::openDownloadPage)});
    shownWindow().showPage(page, prominence);
}

void StandardUpdateDialogs::openPage(const std::string& url) {
    const QUrl page(toQString(url), QUrl::StrictMode);
    if (page.scheme() == "https")
        QDesktopServices::openUrl(page);
}

void StandardUpdateDialogs::bringForward() {
    if (window_)
        window_->bringForward();
}

void StandardUpdateDialogs::close() {
    if (window_)
        window_->hide();
    if (window_)
        window_.release()->deleteLater(); // this may run in one of its handlers
}

} // namespace glimmerly
