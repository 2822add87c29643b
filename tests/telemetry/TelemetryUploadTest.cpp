#include "platform/http/CurlHttpClient.h"
#include "telemetry/TelemetrySink.h"
#include "tests/support/LogCapture.h"
#include "tests/support/LoopbackService.h"
#include "tests/support/desktop/WaitUntil.h"

#include <QJsonArray>
#include <gtest/gtest.h>

#include <set>
#include <thread>

namespace glimmerly {
namespace {

using namespace std::chrono_literals;

/// The sink with the real client and a real service.
class TelemetryUpload : public testing::Test {
protected:
    void configure(const std::string& behaviour) {
        sink = std::make_unique<TelemetrySink>(TelemetrySinkServices{
            .http = client, .bundle = {.serviceBaseURL = service.url(behaviour)}, .system = {}});
    }
    void trackFromEightThreads(int perThread) {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < 8; ++thread)
            threads.emplace_back([this, thread, perThread] {
                for (int i = 0; i < perThread; ++i)
                    sink->track("event", {{"id", thread * perThread + i}});
            });
    }
    LogCapture log;
    LoopbackService service;
    CurlHttpClient client{{.maxWaitingBytes = 32u << 20}};
    std::unique_ptr<TelemetrySink> sink;
};

TEST_F(TelemetryUpload, LosesNoneOfAHundredThousandWhileTheServiceAnswers) {
    configure("right");
    trackFromEightThreads(12'500);
    sink->flushSynchronously();
    std::set<int> arrived;
    std::size_t read = 0;
    const auto allArrived = [&] {
        const auto requests = service.requests();
        for (; read < requests.size(); ++read) {
            const auto events = requests[read]["json"]["events"].toArray();
            for (int seq = 0; seq < events.size(); ++seq) {
                EXPECT_EQ(events[seq]["seq"], seq);
                arrived.insert(events[seq]["props"]["id"].toInt());
            }
        }
        return arrived.size() == 100'000;
    };
    EXPECT_TRUE(waitUntil(allArrived, 90s)) << arrived.size();
    EXPECT_TRUE(log.records().empty());
}

} // namespace
} // namespace glimmerly
