#include "platform/files/Directories.h"

#include "tests/support/ProcessState.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace glimmerly {
namespace {

namespace fs = std::filesystem;

TEST(Directories, TakeTheVariableElseTheHomeAndIgnoreRelativeValues) {
    const ScopedEnvironment home("HOME", "/home/someone");
    struct Case {
        const char* value;
        fs::path support;
        fs::path configuration;
    };
    for (const Case& c : {Case{"/elsewhere", "/elsewhere", "/elsewhere"},
                          Case{nullptr, "/home/someone/.local/share", "/home/someone/.config"},
                          Case{"", "/home/someone/.local/share", "/home/someone/.config"},
                          Case{"relative", "/home/someone/.local/share", "/home/someone/.config"}}) {
        const ScopedEnvironment data("XDG_DATA_HOME", c.value);
        const ScopedEnvironment config("XDG_CONFIG_HOME", c.value);
        EXPECT_EQ(applicationSupportDirectory(), c.support);
        EXPECT_EQ(configurationDirectory(), c.configuration);
    }
    const ScopedEnvironment homeless("HOME", nullptr);
    const ScopedEnvironment data("XDG_DATA_HOME", nullptr);
    EXPECT_EQ(applicationSupportDirectory(), std::nullopt);
}

TEST(Directories, AreMadeForTheOwnerAloneWhateverTheUmask) {
    const ScratchDirectory scratch;
    for (const mode_t mask : {0777U, 0000U}) {
        const ScopedUmask umask(mask);
        const fs::path top = scratch.path() / std::to_string(mask);
        ASSERT_TRUE(makeDirectories(top / "a" / "b"));
        ASSERT_TRUE(makePrivateDirectory(top / "a" / "c"));
        for (const fs::path& made : {top, top / "a", top / "a" / "b", top / "a" / "c"})
            EXPECT_EQ(modeOf(made), 0700U) << made;
    }
}

TEST(Directories, PrivateOnesAreNoLinks) {
    const ScratchDirectory scratch;
    fs::create_directory(scratch.path() / "real");
    fs::create_directory_symlink("real", scratch.path() / "link");
    fs::create_symlink("nowhere", scratch.path() / "dangling");
    EXPECT_TRUE(makeDirectories(scratch.path() / "link" / "below"));
    EXPECT_FALSE(makePrivateDirectory(scratch.path() / "link"));
    EXPECT_FALSE(makePrivateDirectory(scratch.path() / "dangling"));
    writeContent(scratch.path() / "file", "");
    EXPECT_FALSE(makeDirectories(scratch.path() / "file"));
    EXPECT_FALSE(makeDirectories(scratch.path() / "file" / "below"));
}

class TemporaryDirectory : public testing::Test {
protected:
    ScratchDirectory scratch_;
    ScopedEnvironment runtime_{"XDG_RUNTIME_DIR", nullptr};
    ScopedEnvironment temporary_{"TMPDIR", scratch_.path().c_str()};
    fs::path shared_ = scratch_.path() / ("app.glimmerly.Glimmerly-" + std::to_string(::geteuid()));
};

TEST_F(TemporaryDirectory, LiesInTheRuntimeDirectoryAndIsClosedToOthers) {
    const ScopedEnvironment runtime("XDG_RUNTIME_DIR", scratch_.path().c_str());
    const fs::path expected = scratch_.path() / "app.glimmerly.Glimmerly";
    EXPECT_EQ(temporaryDirectory(), expected);
    EXPECT_EQ(modeOf(expected), 0700U);
    fs::permissions(expected, fs::perms(0755));
    EXPECT_EQ(temporaryDirectory(), expected);
    EXPECT_EQ(modeOf(expected), 0700U);
}

TEST_F(TemporaryDirectory, IsNamedAfterTheUserInTheSharedPlace) {
    EXPECT_EQ(temporaryDirectory(), shared_);
    EXPECT_EQ(temporaryDirectory(), shared_) << "a second time";
    EXPECT_EQ(modeOf(shared_), 0700U);
}

TEST_F(TemporaryDirectory, RefusesWhatOthersMayHavePlanted) {
    fs::create_directory(scratch_.path() / "trap");
    fs::create_directory_symlink("trap", shared_);
    EXPECT_EQ(temporaryDirectory().error().code(), ENOTDIR);
    fs::remove(shared_);
    fs::create_directory(shared_);
    fs::permissions(shared_, fs::perms(0777));
    EXPECT_EQ(temporaryDirectory().error().code(), EPERM);
    fs::permissions(shared_, fs::perms(0700));
    if (::chown(shared_.c_str(), 65534, 65534) == 0) { // only root can give a directory away
        EXPECT_EQ(temporaryDirectory().error().code(), EPERM);
    }
}

TEST_F(TemporaryDirectory, FailsWhereNoneCanBeMade) {
    writeContent(scratch_.path() / "file", "");
    const ScopedEnvironment runtime("XDG_RUNTIME_DIR", (scratch_.path() / "file").c_str());
    EXPECT_EQ(temporaryDirectory().error().code(), ENOTDIR);
}

} // namespace
} // namespace glimmerly
