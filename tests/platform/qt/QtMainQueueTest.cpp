#include "platform/qt/QtMainQueue.h"

#include "tests/support/FakeMainQueue.h"

#include <QTest>
#include <QThread>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

namespace glimmerly {
namespace {

/// What everyone who posts tasks relies on; `turn` lets posted tasks run.
void expectContract(MainQueue& queue, const std::function<void()>& turn) {
    std::vector<int> ran;
    queue.post([&] {
        ran.push_back(1);
        queue.post([&] { ran.push_back(3); });
        EXPECT_EQ(ran.size(), 1u) << "never within the call";
    });
    std::thread([&] { queue.post([&] { ran.push_back(2); }); }).join();
    EXPECT_TRUE(ran.empty());
    ASSERT_TRUE(QTest::qWaitFor([&] {
        turn();
        return ran.size() == 3;
    }));
    EXPECT_THAT(ran, testing::ElementsAre(1, 2, 3));
}

TEST(QtMainQueueTest, KeepsTheContractAsTheFakeDoes) {
    QtMainQueue queue;
    expectContract(queue, [] {});
    FakeMainQueue fake;
    expectContract(fake, [&] { fake.runAll(); });
}

TEST(QtMainQueueTest, DropsWhatHasNotRunWhenItGoes) {
    bool ran = false;
    QtMainQueue().post([&] { ran = true; });
    QTest::qWait(0);
    EXPECT_FALSE(ran);
}

} // namespace
} // namespace glimmerly
