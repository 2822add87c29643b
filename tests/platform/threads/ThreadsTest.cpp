#include "platform/threads/Threads.h"

#include "base/SerialQueue.h"

#include <gtest/gtest.h>

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

namespace glimmerly {
namespace {

int niceness() {
    return ::getpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()));
}

TEST(Threads, AreLabelledByTheirNames) {
    EXPECT_EQ(threadLabel(), "main");
    std::thread([] {
        EXPECT_EQ(threadLabel(), "worker");
        ::pthread_setname_np(::pthread_self(), "painter");
        EXPECT_EQ(threadLabel(), "worker:painter");
    }).join();
}

TEST(Threads, UtilityQueuesAreNamedAndStepBackBehindTheMainThread) {
    SerialQueue queue("app.glimmerly.Glimmerly.some-quite-long-name", becomeUtilityThread);
    EXPECT_EQ(queue.sync(threadLabel), "worker:some-quite-long");
    EXPECT_GT(queue.sync(niceness), niceness());
}

} // namespace
} // namespace glimmerly
