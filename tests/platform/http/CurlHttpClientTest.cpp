#include "platform/http/CurlHttpClient.h"

#include "tests/support/LoopbackService.h"

#include <gtest/gtest.h>

#include <future>

namespace glimmerly {
namespace {

using namespace std::chrono_literals;

class CurlHttpClientTest : public testing::Test {
protected:
    static std::future<Result<HttpResponse>> send(HttpClient& client, const std::string& url,
                                                  std::chrono::milliseconds timeout = 20s) {
        auto promise = std::make_shared<std::promise<Result<HttpResponse>>>();
        client.send({url, "application/json", R"({"a":"\/ü"})", timeout},
                    [promise](auto outcome) { promise->set_value(std::move(outcome)); });
        return promise->get_future();
    }
    static int threads() { return static_cast<int>(namesIn("/proc/self/task").size()); }

    ScratchDirectory directory;
};

TEST_F(CurlHttpClientTest, AnswersWhatTheServerDoes) {
    const LoopbackService service;
    const LoopbackService other;
    const struct {
        const char* behaviour;
        std::optional<int> status; ///< none: no HTTP
        std::size_t length;
    } answers[] = {
        {"right", 200, 41},           {"late", 200, 41},
        {"status-503", 503, 17},      {"big-200", 200, 10'000'000},
        {"garbage", std::nullopt, 0},
    };
    CurlHttpClient client;
    for (const auto& [behaviour, status, length] : answers) {
        const auto outcome = send(client, service.url(behaviour)).get();
        ASSERT_TRUE(outcome) << behaviour << ": " << outcome.error().description();
        EXPECT_EQ(outcome->status, status) << behaviour;
        EXPECT_EQ(outcome->body.size(), length) << behaviour;
    }
    for (const char* behaviour : {"half", "silent"}) {
        const auto outcome = send(client, service.url(behaviour)).get();
        ASSERT_FALSE(outcome) << behaviour;
        EXPECT_EQ(outcome.error().domain(), "libcurl");
        EXPECT_FALSE(outcome.error().description().empty());
    }
    EXPECT_EQ(send(client, service.url("never"), 200ms).get().error().code(), 28);
    EXPECT_FALSE(send(client, "http://127.0.0.1:1/").get());
    EXPECT_FALSE(send(client, "file:///etc/hostname").get());

    const auto redirected = send(client, service.url("elsewhere-" + std::to_string(other.port))).get();
    EXPECT_EQ(redirected->status, 307);
    EXPECT_TRUE(other.requests().empty()) << "what is sent goes to its own host alone";
    const auto first = service.requests().at(0);
    EXPECT_EQ(first["type"].toString(), "application/json");
    EXPECT_EQ(first["text"].toString(), R"({"a":"\/ü"})");
}

TEST_F(CurlHttpClientTest, TrustsOnlyAValidCertificateOfThatHost) {
    const TestCertificate certificate(directory.path());
    const LoopbackService service(&certificate);
    CurlHttpClient trusting({.certificateAuthorities = certificate.certificate.string()});
    EXPECT_EQ(send(trusting, service.url("right")).get()->status, 200);
    constexpr int verificationFailed = 60;
    EXPECT_EQ(send(trusting, service.url("right", "localhost")).get().error().code(), verificationFailed);
    CurlHttpClient client;
    EXPECT_EQ(send(client, service.url("right")).get().error().code(), verificationFailed);
    EXPECT_EQ(service.requests().size(), 1u);
}

TEST_F(CurlHttpClientTest, GoesByWayOfTheProxyOfTheEnvironment) {
    const LoopbackService proxy;
    const ScopedEnvironment none("no_proxy", nullptr);
    const ScopedEnvironment environment("http_proxy", proxy.url("").c_str());
    CurlHttpClient client;
    (void)send(client, "http://service.invalid/right").get();
    ASSERT_EQ(proxy.requests().size(), 1u);
    EXPECT_EQ(proxy.requests()[0]["path"].toString(), "http://service.invalid/right");
}

TEST_F(CurlHttpClientTest, RequestsBeyondTheBoundFailAndTheOthersExpire) {
    const LoopbackService service;
    CurlHttpClient client({.maxWaitingBytes = 100});
    std::vector<std::future<Result<HttpResponse>>> outcomes;
    for (int i = 0; i < 100; ++i)
        outcomes.push_back(send(client, service.url("never"), 1s));
    int refused = 0;
    for (auto& outcome : outcomes) {
        ASSERT_EQ(outcome.wait_for(10s), std::future_status::ready);
        refused += outcome.get().error().code() == 27 ? 1 : 0;
    }
    EXPECT_GE(refused, 70);
    EXPECT_LT(refused, 100);
    EXPECT_EQ(send(client, service.url("right")).get()->status, 200) << "afterwards it is as ever";
}

TEST_F(CurlHttpClientTest, StartsAThreadWithTheFirstRequestAndStopsItAtOnce) {
    const LoopbackService service;
    const int before = threads();
    CurlHttpClient client;
    EXPECT_EQ(threads(), before);
    const auto unanswered = send(client, service.url("never"));
    const int during = threads();
    EXPECT_GT(during, before);
    const auto start = std::chrono::steady_clock::now();
    client.stop();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s) << "less than the request's timeout";
    EXPECT_LT(threads(), during);
    EXPECT_THROW((void)send(client, service.url("right")).get(), std::future_error)
        << "dropped without a word";
}

} // namespace
} // namespace glimmerly
