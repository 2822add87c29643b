#include "platform/http/HttpDownload.h"

#include "tests/support/LoopbackService.h"

#include <gtest/gtest.h>

#include <thread>

namespace glimmerly {
namespace {

using namespace std::chrono_literals;

class HttpDownloadTest : public testing::Test {
protected:
    HttpDownloadTest() { writeContent(service.files() / "a", content); }

    Result<void> fetchFrom(const std::string& behaviour, const std::stop_token& stop = {},
                           std::uint64_t largest = 3'000'000, const std::string& host = "127.0.0.1") {
        received.clear();
        return fetch(
            {.url = service.url(behaviour + "/a", host),
             .largest = largest,
             .patience = patience,
             .certificateAuthorities = certificate.certificate.string()},
            [this](std::span<const std::byte> bytes) -> Result<void> {
                received.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
                if (onReceive)
                    return onReceive();
                return {};
            },
            stop);
    }

    ScratchDirectory directory;
    TestCertificate certificate{directory.path()};
    LoopbackService service{&certificate};
    std::string content = std::string(3'000'000, 'c');
    std::string received;
    int patience = 2; ///< seconds without a byte
    std::function<Result<void>()> onReceive;
};

TEST_F(HttpDownloadTest, FetchesAllOfItOrFails) {
    for (const char* behaviour : {"file", "moved"}) {
        const auto outcome = fetchFrom(behaviour);
        ASSERT_TRUE(outcome) << behaviour << ": " << outcome.error().description();
        EXPECT_EQ(received, content) << behaviour;
    }
    EXPECT_FALSE(fetchFrom("cut"));
    EXPECT_EQ(received, content.substr(0, content.size() / 2));
    for (const char* behaviour : {"missing", "insecure"}) {
        EXPECT_FALSE(fetchFrom(behaviour)) << behaviour;
        EXPECT_EQ(received, "") << behaviour;
    }
    EXPECT_FALSE(fetchFrom("file", {}, content.size() - 1));
    EXPECT_LT(received.size(), content.size());
    EXPECT_FALSE(fetchFrom("file", {}, content.size(), "localhost")) << "a certificate of another host";
    EXPECT_FALSE(fetchFrom("hang")) << "nothing more comes";

    onReceive = [] { return failure(Error("disk", 28, "full")); };
    EXPECT_EQ(fetchFrom("file").error().domain(), "disk");

    const LoopbackService insecure;
    writeContent(insecure.files() / "a", content);
    EXPECT_FALSE(fetch({.url = insecure.url("file/a"), .largest = 9'000'000}, {}, {}));
    EXPECT_FALSE(fetch({.url = "file:///etc/hostname", .largest = 9'000'000}, {}, {}));
}

TEST_F(HttpDownloadTest, StopsAtOnce) {
    patience = 60;
    std::stop_source stop;
    std::jthread stopper;
    onReceive = [&]() -> Result<void> {
        if (received.size() == content.size() / 2)
            stopper = std::jthread([&] { stop.request_stop(); });
        return {};
    };
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(fetchFrom("hang", stop.get_token()));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 30s) << "earlier than its patience";
    EXPECT_FALSE(fetchFrom("file", stop.get_token())) << "before it began";
}

} // namespace
} // namespace glimmerly
