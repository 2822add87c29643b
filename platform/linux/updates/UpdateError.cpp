#include "platform/linux/updates/UpdateError.h"

#include <cerrno>

namespace glimmerly {

namespace {

const char* wordsFor(UpdateErrorCode code) {
    switch (code) {
    case UpdateErrorCode::feedInvalid:
        return "The server for updates sent something that is not a list of updates. Please try again later.";
    case UpdateErrorCode::noUpdate:
        return "You’re up to date!";
    case UpdateErrorCode::feedUnreachable:
        return "The list of updates could not be fetched. Please check your network connection, or try "
               "again later.";
    case UpdateErrorCode::notConfigured:
        return "This copy of the program was built without updates.";
    case UpdateErrorCode::downloadFailed:
        return "The update could not be downloaded. Please check your network connection, or try again "
               "later.";
    case UpdateErrorCode::archiveUnusable:
        return "The update could not be unpacked. Nothing was changed.";
    case UpdateErrorCode::signatureInvalid:
        return "The update was damaged on its way, or does not come from the makers of this program. It was "
               "not installed.";
    case UpdateErrorCode::versionUnexpected:
        return "The update is not the version that was announced. It was not installed.";
    case UpdateErrorCode::doesNotRun:
        return "The new version does not run on this computer. It was not installed.";
    case UpdateErrorCode::notReplaceable:
        return "The update cannot be installed in the folder that this program is in.";
    case UpdateErrorCode::alreadyInstalled:
        return "A newer version is installed already. Please quit this program and open it again.";
    case UpdateErrorCode::notTakenBack:
        return "The new version did not start, and this version could not be put back in its place.";
    case UpdateErrorCode::notInstalled:
        return "The update could not be installed. This version stays as it is.";
    case UpdateErrorCode::notRelaunched:
        return "The new version did not start, so this version was put back.";
    case UpdateErrorCode::cancelledByUser:
        return "The update was cancelled.";
    }
    return "";
}

bool isFullDisk(const Error& cause) {
    return cause.domain() == "POSIX" && (cause.code() == ENOSPC || cause.code() == EDQUOT);
}

bool isHeldByAnother(const Error& cause) {
    return cause.domain() == "POSIX" && cause.code() == EWOULDBLOCK;
}

} // namespace

Error updateError(UpdateErrorCode code, const std::optional<Error>& cause) {
    const char* words = wordsFor(code);
    if (cause && isFullDisk(*cause))
        words = "There is not enough room on the disk for the update. Nothing was changed.";
    else if (cause && isHeldByAnother(*cause))
        words = "Another copy of this program is being updated right now. Please try again later.";
    Error error(std::string(updateErrorDomain), static_cast<int>(code), words);
    if (!cause)
        return error;
    return std::move(error).withFailureReason(cause->description()).withUnderlying(*cause);
}

bool mayWorkLater(const Error& error) {
    return isCode(error, UpdateErrorCode::downloadFailed) ||
           isCode(error, UpdateErrorCode::alreadyInstalled) ||
           (error.underlying() != nullptr && isHeldByAnother(*error.underlying()));
}

bool canInstallByHand(const Error& error) {
    if (!isCode(error, UpdateErrorCode::notReplaceable) && !isCode(error, UpdateErrorCode::notInstalled) &&
        !isCode(error, UpdateErrorCode::notTakenBack))
        return false;
    const auto* cause = error.underlying();
    return cause == nullptr || (!isFullDisk(*cause) && !isHeldByAnother(*cause));
}

} // namespace glimmerly
