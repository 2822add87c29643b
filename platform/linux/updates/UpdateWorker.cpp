#include "platform/linux/updates/UpdateWorker.h"

#include "platform/MainQueue.h"
#include "platform/http/HttpDownload.h"
#include "platform/linux/updates/UpdateError.h"
#include "platform/linux/updates/feed/VersionOrder.h"
#include "platform/threads/Threads.h"

#include <chrono>
#include <future>

namespace glimmerly {

namespace {

constexpr int longestFetchOfFeed = 60;               // seconds; a byte now and then is no answer
constexpr int longestFetchOfArchive = 6 * 3600;      // seconds; checks wait for it
constexpr std::uint64_t largestArchive = 512u << 20; // bytes

std::unexpected<Error> updateFailure(UpdateErrorCode code, const std::optional<Error>& cause = {}) {
    return failure(updateError(code, cause));
}

} // namespace

UpdateWorker::UpdateWorker(Options options, MainQueue& mainQueue)
    : options_(std::move(options)), mainQueue_(mainQueue) {}

UpdateWorker::~UpdateWorker() {
    stop_.request_stop();
}

SerialQueue& UpdateWorker::queue() {
    if (!queue_)
        queue_ = std::make_unique<SerialQueue>("app.glimmerly.Glimmerly.updates", becomeUtilityThread);
    return *queue_;
}

void UpdateWorker::post(const std::stop_token& stop, std::function<void()> task) {
    if (stop.stop_requested())
        return;
    mainQueue_.post([stop, task = std::move(task)] {
        if (!stop.stop_requested())
            task();
    });
}

void UpdateWorker::fetchFeed(std::function<void(Feed)> completion) {
    queue().async([this, stop = stop_.get_token(), completion = std::move(completion)] {
        post(stop, [completion, outcome = feed(stop)] { completion(outcome); });
    });
}

void UpdateWorker::prepare(const AppcastItem& item, std::function<void(DownloadProgress)> progress,
                           std::function<void(Result<void>)> completion) {
    queue().async([this, stop = stop_.get_token(), item, progress = std::move(progress),
                   completion = std::move(completion)] {
        const auto tell = [&](DownloadProgress now) { post(stop, [progress, now] { progress(now); }); };
        auto outcome = staged(item, tell, stop);
        if (!outcome)
            return post(stop, [completion, error = outcome.error()] { completion(failure(error)); });
        // What is given up goes away with the last copy of the task.
        const auto ready = std::make_shared<StagedUpdate>(std::move(*outcome));
        post(stop, [this, completion, ready] {
            staged_ = ready;
            completion({});
        });
    });
}

void UpdateWorker::cancel() {
    stop_.request_stop();
    stop_ = {};
    staged_.reset();
}

void UpdateWorker::waitForCancellation() {
    if (!queue_)
        return;
    // What the kernel does not let go of, on a disk that is busy or gone, is left to the end of the process.
    constexpr std::chrono::milliseconds patience{500};
    const auto idle = std::make_shared<std::promise<void>>();
    queue_->async([idle] { idle->set_value(); });
    (void)idle->get_future().wait_for(patience);
}

UpdateWork::Feed UpdateWorker::feed(const std::stop_token& stop) const {
    AppcastReader reader;
    bool isUnderstood = true;
    const auto fetched = fetch(
        {.url = options_.feedURL,
         .largest = 2 * appcast_limits::feed, // the reader refuses it earlier
         .longest = longestFetchOfFeed,
         .certificateAuthorities = options_.certificateAuthorities},
        [&](std::span<const std::byte> bytes) {
            auto added = reader.add({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
            isUnderstood = added.has_value();
            return added;
        },
        stop);
    if (!fetched)
        return updateFailure(isUnderstood ? UpdateErrorCode::feedUnreachable : UpdateErrorCode::feedInvalid,
                             fetched.error());
    auto items = reader.finish();
    if (!items)
        return updateFailure(UpdateErrorCode::feedInvalid, items.error());
    return items;
}

Result<StagedUpdate> UpdateWorker::staged(const AppcastItem& item, const Progress& progress,
                                          const std::stop_token& stop) const {
    if (compareVersions(item.version, options_.currentVersion) <= 0)
        return updateFailure(UpdateErrorCode::versionUnexpected);
    auto update = StagedUpdate::begin(options_.installed, options_.currentVersion);
    if (!update)
        return updateFailure(options_.installed.isNewerThan(options_.currentVersion)
                                 ? UpdateErrorCode::alreadyInstalled
                                 : UpdateErrorCode::notReplaceable,
                             update.error());
    auto archive = ArrivingArchive::create(update->slot());
    if (!archive)
        return updateFailure(UpdateErrorCode::downloadFailed, archive.error());
    if (auto downloaded = download(item, *archive, progress, stop); !downloaded)
        return failure(downloaded.error());
    if (auto unpacked = unpack(item, *archive, *update, stop); !unpacked)
        return failure(unpacked.error());
    return update;
}

Result<void> UpdateWorker::download(const AppcastItem& item, ArrivingArchive& archive,
                                    const Progress& progress, const std::stop_token& stop) const {
    const std::uint64_t length = item.enclosure.length;
    std::uint64_t told = 0;
    const auto receive = [&](std::span<const std::byte> bytes) {
        constexpr std::uint64_t steps = 200; // of the progress, more of which nobody sees
        auto added = archive.add(bytes);
        if (archive.size() * steps / length > told) {
            told = archive.size() * steps / length;
            progress({archive.size(), length});
        }
        return added;
    };
    if (length > largestArchive)
        return updateFailure(UpdateErrorCode::archiveUnusable);
    progress({0, length});
    const auto fetched = fetch({.url = item.enclosure.url,
                                .largest = length,
                                .longest = longestFetchOfArchive,
                                .certificateAuthorities = options_.certificateAuthorities},
                               receive, stop);
    if (!fetched)
        return updateFailure(UpdateErrorCode::downloadFailed, fetched.error());
    return {};
}

Result<void> UpdateWorker::unpack(const AppcastItem& item, const ArrivingArchive& archive,
                                  StagedUpdate& staged, const std::stop_token& stop) const {
    if (archive.size() != item.enclosure.length)
        return updateFailure(UpdateErrorCode::signatureInvalid,
                             Error("GlimmerlyUpdate", 0, "The archive is shorter than announced."));
    const auto bytes = archive.read();
    if (!bytes)
        return updateFailure(UpdateErrorCode::archiveUnusable, bytes.error());
    if (!options_.key.hasSigned(bytes->span(), item.enclosure.signature))
        return updateFailure(UpdateErrorCode::signatureInvalid,
                             Error("GlimmerlyUpdate", 1, "The archive’s signature is wrong."));
    if (auto unpacked = staged.unpack(bytes->span(), stop); !unpacked)
        return updateFailure(UpdateErrorCode::archiveUnusable, unpacked.error());
    if (staged.version() != item.version)
        return updateFailure(
            UpdateErrorCode::versionUnexpected,
            Error("GlimmerlyUpdate", 2,
                  "The archive holds the version " + staged.version().value_or("none") + "."));
    if (auto checked = staged.check(stop); !checked)
        return updateFailure(UpdateErrorCode::doesNotRun, checked.error());
    return {};
}

Result<void> UpdateWorker::install() {
    if (!staged_)
        return updateFailure(UpdateErrorCode::notInstalled);
    if (auto installed = staged_->install(); !installed)
        return updateFailure(UpdateErrorCode::notInstalled, installed.error());
    return {};
}

Result<void> UpdateWorker::revert() {
    if (!staged_)
        return updateFailure(UpdateErrorCode::notInstalled);
    if (auto reverted = staged_->revert(); !reverted)
        return updateFailure(UpdateErrorCode::notTakenBack, reverted.error());
    return {};
}

} // namespace glimmerly
