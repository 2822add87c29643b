#pragma once

#include "base/SerialQueue.h"
#include "platform/linux/updates/UpdateWork.h"
#include "platform/linux/updates/archive/UpdateKey.h"
#include "platform/linux/updates/install/StagedUpdate.h"

#include <memory>
#include <stop_token>

namespace glimmerly {

class MainQueue;

/// Does the work for real, on a thread of its own that starts with the first of it.
class UpdateWorker final : public UpdateWork {
public:
    struct Options {
        std::string feedURL;
        UpdateKey key;
        std::string currentVersion;
        InstalledFolder installed;
        std::string certificateAuthorities{}; ///< a PEM file in place of the system's; empty: the system's
    };

    /// `mainQueue` must outlive this.
    UpdateWorker(Options options, MainQueue& mainQueue);
    ~UpdateWorker() override;
    UpdateWorker(const UpdateWorker&) = delete;
    UpdateWorker& operator=(const UpdateWorker&) = delete;

    void fetchFeed(std::function<void(Feed)> completion) override;
    void prepare(const AppcastItem& item, std::function<void(DownloadProgress)> progress,
                 std::function<void(Result<void>)> completion) override;
    void cancel() override;
    void waitForCancellation() override;
    [[nodiscard]] Replaceability replaceability() const override {
        return options_.installed.replaceability();
    }
    [[nodiscard]] Result<void> install() override;
    [[nodiscard]] Result<void> revert() override;

private:
    using Progress = std::function<void(DownloadProgress)>;

    SerialQueue& queue();
    /// Has `task` run on the main thread unless the work was given up by then.
    void post(const std::stop_token& stop, std::function<void()> task);

    // On the queue.
    [[nodiscard]] Feed feed(const std::stop_token& stop) const;
    [[nodiscard]] Result<StagedUpdate> staged(const AppcastItem& item, const Progress& progress,
                                              const std::stop_token& stop) const;
    [[nodiscard]] Result<void> download(const AppcastItem& item, ArrivingArchive& archive,
                                        const Progress& progress, const std::stop_token& stop) const;
    [[nodiscard]] Result<void> unpack(const AppcastItem& item, const ArrivingArchive& archive,
                                      StagedUpdate& staged, const std::stop_token& stop) const;

    const Options options_;
    MainQueue& mainQueue_;
    std::stop_source stop_;
    std::shared_ptr<StagedUpdate> staged_; ///< ready to be installed
    std::unique_ptr<SerialQueue> queue_;
};

} // namespace glimmerly
