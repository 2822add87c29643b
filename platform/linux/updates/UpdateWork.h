#pragma once

#include "platform/linux/updates/feed/Appcast.h"
#include "platform/linux/updates/install/InstalledFolder.h"

#include <functional>
#include <vector>

namespace glimmerly {

/// How far a download is, in bytes.
struct DownloadProgress {
    std::uint64_t received = 0;
    std::uint64_t total = 0;
};

/// What an update takes, one step after the other. The asynchronous ones answer once, on the main thread,
/// unless they are given up; their errors are the updater's own.
class UpdateWork {
public:
    using Feed = Result<std::vector<AppcastItem>>;

    virtual ~UpdateWork() = default;

    virtual void fetchFeed(std::function<void(Feed)> completion) = 0;
    /// Downloads the item's archive, makes sure that it may be used, makes its version ready beside this one,
    /// and has it check itself. `progress` runs on the main thread.
    virtual void prepare(const AppcastItem& item, std::function<void(DownloadProgress)> progress,
                         std::function<void(Result<void>)> completion) = 0;
    /// Gives up what is under way and throws away what was made ready and not installed. Does not wait.
    virtual void cancel() = 0;
    /// Waits until what was given up has left nothing behind, at most half a second.
    virtual void waitForCancellation() = 0;

    [[nodiscard]] virtual Replaceability replaceability() const = 0;
    /// Puts the version that was made ready in the place of this one, which is kept until that has started.
    [[nodiscard]] virtual Result<void> install() = 0;
    /// Takes that back.
    [[nodiscard]] virtual Result<void> revert() = 0;
};

} // namespace glimmerly
