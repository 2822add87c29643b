#include "platform/desktop/SingleInstance.h"

#include "platform/files/FileDescriptor.h"
#include "tests/support/ProcessState.h"
#include "tests/support/ScratchDirectory.h"

#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace glimmerly {
namespace {

enum Outcome { heldTheRight = 10, handedOver, failed };

/// Claims in a process of its own, which holds the right until `finished` is closed.
pid_t claimElsewhere(const std::filesystem::path& directory, int start, int finished) {
    const pid_t child = ::fork();
    if (child != 0)
        return child;
    char byte = 0;
    [[maybe_unused]] const auto begun = ::read(start, &byte, 1); // until the parent closes it
    const auto claimed = SingleInstance::claim(directory, "_0");
    if (!claimed)
        ::_exit(failed);
    if (!*claimed)
        ::_exit(handedOver);
    [[maybe_unused]] const auto ended = ::read(finished, &byte, 1);
    ::_exit(heldTheRight);
}

int outcomeOf(pid_t process) {
    int status = 0;
    ::waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(SingleInstanceTest, HearsOfFurtherStartsAndGivesTheRightUp) {
    const ScratchDirectory scratch;
    int heard = 0;
    {
        const mode_t umaskBefore = ::umask(0777);
        auto first = SingleInstance::claim(scratch.path(), "_0");
        ::umask(umaskBefore);
        ASSERT_TRUE(first && *first);
        (*first)->onHandOver([&] { ++heard; });

        const pid_t second = claimElsewhere(scratch.path(), -1, -1);
        EXPECT_TRUE(QTest::qWaitFor([&] { return heard > 0; }));
        EXPECT_EQ(outcomeOf(second), handedOver);

        const auto otherSession = SingleInstance::claim(scratch.path(), "_1");
        ASSERT_TRUE(otherSession && *otherSession);
        EXPECT_FALSE((*first)->isOnlySession());
        EXPECT_FALSE((*otherSession)->isOnlySession());
        EXPECT_EQ(modeOf(scratch.path() / "instance-_0.socket") & 077, 0u);
        EXPECT_EQ(modeOf(scratch.path() / "instance-_0.lock"), 0600u);
    }
    const auto next = SingleInstance::claim(scratch.path(), "_0");
    EXPECT_TRUE(next && *next);
    EXPECT_EQ(heard, 1);
}

TEST(SingleInstanceTest, ASuccessorGetsTheRightAndNobodyElseMeanwhile) {
    const ScratchDirectory scratch;
    int finished[2];
    ASSERT_EQ(::pipe(finished), 0);
    const auto isFree = [&] {
        const FileDescriptor lock(::open((scratch.path() / "instance-_0.lock").c_str(), O_RDWR | O_CLOEXEC));
        return ::flock(lock.get(), LOCK_EX | LOCK_NB) == 0;
    };
    pid_t successor = 0;
    {
        auto first = SingleInstance::claim(scratch.path(), "_0");
        ASSERT_TRUE(first && *first);
        (*first)->onHandOver([] { FAIL() << "a successor is no further start"; });
        int start[2];
        ASSERT_EQ(::pipe(start), 0);
        successor = claimElsewhere(scratch.path(), start[0], finished[0]);
        bool given = false;
        (*first)->giveTo(successor, [&] { given = true; });
        ::close(start[0]);
        ASSERT_EQ(::write(start[1], "", 1), 1);
        EXPECT_TRUE(QTest::qWaitFor([&] { return given; }));
        EXPECT_FALSE(isFree());
    }
    EXPECT_FALSE(isFree());
    EXPECT_TRUE(exists(scratch.path() / "instance-_0.socket")) << "where further starts ask";
    ::close(finished[0]);
    ASSERT_EQ(::write(finished[1], "", 1), 1);
    EXPECT_EQ(outcomeOf(successor), heldTheRight);
    EXPECT_TRUE(isFree());
}

TEST(SingleInstanceTest, WhatADeadProcessLeftIsNoObstacle) {
    const ScratchDirectory scratch;
    int finished[2];
    ASSERT_EQ(::pipe(finished), 0);
    const pid_t killed = claimElsewhere(scratch.path(), -1, finished[0]);
    ASSERT_TRUE(QTest::qWaitFor([&] { return exists(scratch.path() / "instance-_0.socket"); }));
    ::kill(killed, SIGKILL);
    outcomeOf(killed);
    const auto next = SingleInstance::claim(scratch.path(), "_0");
    EXPECT_TRUE(next && *next);
}

TEST(SingleInstanceTest, NothingIsFollowedOutOfTheDirectory) {
    const ScratchDirectory scratch;
    const ScratchDirectory elsewhere;
    create_symlink(elsewhere.path() / "lock", scratch.path() / "instance-_0.lock");
    EXPECT_FALSE(SingleInstance::claim(scratch.path(), "_0"));
    EXPECT_TRUE(elsewhere.names().empty());

    create_symlink(elsewhere.path() / "socket", scratch.path() / "instance-_1.socket");
    const auto claimed = SingleInstance::claim(scratch.path(), "_1");
    EXPECT_TRUE(claimed && *claimed);
    EXPECT_TRUE(elsewhere.names().empty());
}

TEST(SingleInstanceTest, PathsMayBeLongerThanASocketsAddress) {
    const ScratchDirectory scratch;
    const auto deep = scratch.path() / std::string(120, 'd');
    create_directory(deep);
    const auto claimed = SingleInstance::claim(deep, "_0");
    EXPECT_TRUE(claimed && *claimed);
}

TEST(SingleInstanceTest, TheScreenNumberIsNoPartOfTheSession) {
    const std::pair<const char*, const char*> cases[] = {
        {":0", "_0"}, {":0.1", "_0"}, {"host.example:10.0", "host_example_10"}, {nullptr, ""}};
    for (const auto& [display, expected] : cases) {
        const ScopedEnvironment environment("DISPLAY", display);
        EXPECT_EQ(displaySessionName(), expected);
    }
}

} // namespace
} // namespace glimmerly
