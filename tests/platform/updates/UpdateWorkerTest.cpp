#include "platform/linux/updates/UpdateWorker.h"

#include "platform/MainQueue.h"
#include "tests/support/FakeMainQueue.h"
#include "tests/support/LoopbackService.h"
#include "tests/support/UpdateArchive.h"
#include "tests/support/desktop/WaitUntil.h"

#include <gtest/gtest.h>

#include <deque>
#include <mutex>

namespace glimmerly {
namespace {

namespace fs = std::filesystem;

/// Turned by the test's thread, posted to from any.
class LockedMainQueue : public MainQueue {
public:
    void post(std::function<void()> task) override {
        const std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
    }
    void runAll() {
        std::deque<std::function<void()>> tasks;
        {
            const std::lock_guard lock(mutex_);
            tasks.swap(tasks_);
        }
        for (const auto& task : tasks)
            task();
    }

private:
    std::mutex mutex_;
    std::deque<std::function<void()>> tasks_;
};

class UpdateWorkerTest : public testing::Test {
protected:
    UpdateWorkerTest() {
        fs::create_directories(folder / "bin");
        fs::create_directories(folder / "share/glimmerly");
        writeContent(folder / "bin/glimmerly", "1.0");
        writeContent(folder / InstalledFolder::contentsFile,
                     "1.0\nbin/glimmerly\nshare/glimmerly/archive-contents\n");
    }

    [[nodiscard]] UpdateWorker::Options options(const std::string& feed) const {
        return {.feedURL = feed,
                .key = *UpdateKey::fromBase64(key.publicKey()),
                .currentVersion = "1.0",
                .installed = InstalledFolder(folder / "bin/glimmerly"),
                .certificateAuthorities = certificate.certificate.string()};
    }
    /// An item about `archive` as it lies on the server.
    AppcastItem offer(const std::string& archive, const std::string& version = "2.0") {
        writeContent(service.files() / "archive", archive);
        return {.version = version,
                .enclosure = {.url = service.url("file/archive"),
                              .length = archive.size(),
                              .signature = key.signatureOf(archive)}};
    }
    /// The error's code; 0 without one.
    int prepare(const AppcastItem& item) {
        std::optional<int> code;
        worker.prepare(
            item, [this](DownloadProgress now) { progress.push_back(now); },
            [&](const Result<void>& outcome) { code = outcome ? 0 : outcome.error().code(); });
        EXPECT_TRUE(waitUntil([&] {
            queue.runAll();
            return code.has_value();
        }));
        return code.value_or(-1);
    }
    [[nodiscard]] std::vector<std::string> besides() const { return namesIn(folder.parent_path()); }

    ScratchDirectory directory;
    TestCertificate certificate{directory.path()};
    LoopbackService service{&certificate};
    SigningKey key;
    fs::path folder = directory.path() / "apps/G";
    LockedMainQueue queue;
    UpdateWorker worker{options(service.url("file/feed")), queue};
    std::vector<DownloadProgress> progress;
};

TEST_F(UpdateWorkerTest, InstallsWhatIsRightToTheLastBit) {
    const std::string archive = archiveOfVersion("2.0");
    ASSERT_EQ(prepare(offer(archive)), 0);
    EXPECT_EQ(progress.back().received, archive.size());
    EXPECT_EQ(archiveVersionIn(folder), "1.0");
    ASSERT_TRUE(worker.install());
    EXPECT_EQ(archiveVersionIn(folder), "2.0");
    ASSERT_TRUE(worker.revert());
    EXPECT_EQ(archiveVersionIn(folder), "1.0");
    worker.cancel();
    EXPECT_EQ(besides(), std::vector<std::string>{"G"});

    writeContent(folder / InstalledFolder::contentsFile, "1.5\nbin/glimmerly\n");
    EXPECT_EQ(prepare(offer(archive)), 4002) << "another instance was faster";
}

TEST_F(UpdateWorkerTest, UsesNothingElse) {
    const std::string archive = archiveOfVersion("2.0");
    std::string flipped = archive;
    flipped[archive.size() / 2] = static_cast<char>(flipped[archive.size() / 2] ^ 4);
    const auto changed = [&](auto change) {
        AppcastItem item = offer(archive);
        change(item);
        return item;
    };
    const struct {
        const char* name;
        std::function<AppcastItem()> item;
        int code;
    } cases[] = {
        {"one bit",
         [&] {
             const auto item = offer(archive);
             writeContent(service.files() / "archive", flipped);
             return item;
         },
         3001},
        {"no signature", [&] { return changed([](auto& item) { item.enclosure.signature = ""; }); }, 3001},
        {"shorter than announced", [&] { return changed([](auto& item) { ++item.enclosure.length; }); },
         3001},
        {"longer than announced", [&] { return changed([](auto& item) { --item.enclosure.length; }); }, 2001},
        {"not there",
         [&] { return changed([&](auto& item) { item.enclosure.url = service.url("missing/archive"); }); },
         2001},
        {"larger than any", [&] { return changed([](auto& item) { item.enclosure.length = 1ull << 40; }); },
         3000},
        {"older", [&] { return offer(archiveOfVersion("0.9"), "0.9"); }, 3002},
        {"older than announced", [&] { return offer(archiveOfVersion("0.9"), "2.0"); }, 3002},
        {"without a program",
         [&] { return offer(archiveOf({{.path = "G/share/glimmerly/archive-contents", .content = "2.0"}})); },
         3002},
        {"a program that does not work", [&] { return offer(archiveOfVersion("2.0", "exit 1")); }, 3003},
        {"without its contents",
         [&] { return offer(archiveOf({{.path = "G/bin/glimmerly", .content = "2", .mode = 0755}})); }, 3002},
    };
    for (const auto& [name, item, code] : cases) {
        EXPECT_EQ(prepare(item()), code) << name;
        EXPECT_FALSE(worker.install()) << name;
        EXPECT_EQ(besides(), std::vector<std::string>{"G"}) << name;
    }
    EXPECT_EQ(archiveVersionIn(folder), "1.0");
}

TEST_F(UpdateWorkerTest, TellsAFeedFromWhatIsNone) {
    const std::string item =
        R"(<item><u:version>2</u:version><enclosure url="https://a/" length="1"/></item>)";
    const std::string feed = R"(<rss xmlns:u="u"><channel>)" + item + "</channel></rss>";
    const struct {
        const char* behaviour;
        std::string content;
        int code; ///< 0: one item
    } cases[] = {
        {"file", feed, 0},
        {"file", "<html><body>Welcome to the network of this hotel</body></html>", 1000},
        {"file", R"(<!DOCTYPE r [<!ENTITY a "aaaa"><!ENTITY b "&a;&a;">]>)" + feed, 1000},
        {"file", std::string(2u << 20, ' '), 1000},
        {"missing", feed, 1002},
        {"cut", feed, 1002},
    };
    for (const auto& [behaviour, content, code] : cases) {
        writeContent(service.files() / "feed", content);
        UpdateWorker reader(options(service.url(std::string(behaviour) + "/feed")), queue);
        std::optional<UpdateWork::Feed> answer;
        reader.fetchFeed([&](auto read) { answer = std::move(read); });
        ASSERT_TRUE(waitUntil([&] {
            queue.runAll();
            return answer.has_value();
        })) << content.substr(0, 40);
        EXPECT_EQ(*answer ? 0 : answer->error().code(), code) << behaviour << ": " << content.substr(0, 40);
        EXPECT_TRUE(!*answer || (*answer)->at(0).version == "2");
    }
}

TEST_F(UpdateWorkerTest, WhatIsGivenUpAnswersNoMoreAndLeavesNothing) {
    AppcastItem item = offer(archiveOfVersion("2.0"));
    item.enclosure.url = service.url("hang/archive");
    int answers = 0;
    worker.prepare(
        item, [&](DownloadProgress now) { progress.push_back(now); },
        [&](const Result<void>&) { ++answers; });
    ASSERT_TRUE(waitUntil([&] {
        queue.runAll();
        return progress.size() > 1;
    }));
    EXPECT_EQ(besides().size(), 2u);
    worker.cancel();
    worker.waitForCancellation();
    queue.runAll();
    EXPECT_EQ(answers, 0);
    EXPECT_EQ(besides(), std::vector<std::string>{"G"});
    EXPECT_EQ(prepare(offer(archiveOfVersion("2.0"))), 0) << "and the next one works";
}

} // namespace
} // namespace glimmerly
