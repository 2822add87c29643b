#include "platform/files/AtomicFile.h"

#include "platform/files/TemporaryFile.h"
#include "tests/support/ProcessState.h"
#include "tests/support/ScratchDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string_view>

namespace glimmerly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Bytes bytesOf(std::string_view text) {
    return std::as_bytes(std::span(text));
}

TEST(AtomicFile, JoinsMoreBuffersThanOneCallTakes) {
    const ScratchDirectory scratch;
    const std::string big(3 << 20, 'x');
    std::vector<Bytes> pieces(3000, bytesOf("ab"));
    pieces.emplace_back();
    pieces.push_back(bytesOf(big));
    ASSERT_TRUE(writeFileAtomically(scratch.path() / "file", pieces));
    const std::string content = contentOf(scratch.path() / "file");
    EXPECT_EQ(content.size(), 6000 + big.size());
    EXPECT_EQ(content.substr(5996, 6), "ababxx");
    EXPECT_THAT(scratch.names(), ElementsAre("file"));
}

TEST(AtomicFile, IsReadableByTheOwnerAloneWhateverTheUmask) {
    const ScratchDirectory scratch;
    for (const mode_t mask : {0777U, 0000U}) {
        const ScopedUmask umask(mask);
        ASSERT_TRUE(writeFileAtomically(scratch.path() / "file", bytesOf("x")));
        EXPECT_EQ(modeOf(scratch.path() / "file"), 0600U) << "umask " << mask;
    }
}

TEST(AtomicFile, ChosenByUserTakesTheUmaskOrTheModeOfTheFileItReplaces) {
    const ScratchDirectory scratch;
    const auto file = scratch.path() / "file";
    const ScopedUmask umask(0027);
    ASSERT_TRUE(writeFileAtomically(file, bytesOf("x"), Destination::chosenByUser));
    EXPECT_EQ(modeOf(file), 0640U);
    std::filesystem::permissions(file, std::filesystem::perms(0604));
    ASSERT_TRUE(writeFileAtomically(file, bytesOf("y"), Destination::chosenByUser));
    EXPECT_EQ(modeOf(file), 0604U);
}

TEST(AtomicFile, ReplacesALinkPlantedUnderItsNameNotItsTarget) {
    const ScratchDirectory scratch;
    writeContent(scratch.path() / "victim", "precious");
    for (const auto destination : {Destination::ownDirectory, Destination::chosenByUser}) {
        std::filesystem::remove(scratch.path() / "file");
        std::filesystem::create_symlink("victim", scratch.path() / "file");
        ASSERT_TRUE(writeFileAtomically(scratch.path() / "file", bytesOf("new"), destination));
        EXPECT_EQ(contentOf(scratch.path() / "victim"), "precious");
        EXPECT_TRUE(
            std::filesystem::is_regular_file(std::filesystem::symlink_status(scratch.path() / "file")));
        EXPECT_EQ(contentOf(scratch.path() / "file"), "new");
    }
}

TEST(AtomicFile, FollowsALinkedDirectoryOnlyForTheUser) {
    const ScratchDirectory scratch;
    std::filesystem::create_directory(scratch.path() / "real");
    std::filesystem::create_directory_symlink("real", scratch.path() / "link");
    const auto file = scratch.path() / "link" / "file";
    EXPECT_EQ(writeFileAtomically(file, bytesOf("x")).error().code(), ENOTDIR);
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_TRUE(writeFileAtomically(file, bytesOf("x"), Destination::chosenByUser));
    EXPECT_EQ(contentOf(file), "x");
}

TEST(AtomicFile, LeavesTheOldFileAndNothingElseWhenTheDiskIsFull) {
    const ScratchDirectory scratch;
    writeContent(scratch.path() / "file", "old");
    {
        const FileSizeLimit limit(4096);
        const auto written = writeFileAtomically(scratch.path() / "file", bytesOf(std::string(5000, 'x')));
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error().domain(), "POSIX");
        EXPECT_EQ(written.error().code(), EFBIG);
    }
    EXPECT_EQ(contentOf(scratch.path() / "file"), "old");
    EXPECT_THAT(scratch.names(), ElementsAre("file"));
}

TEST(AtomicFile, FailsOverADirectoryAndWithoutOne) {
    const ScratchDirectory scratch;
    std::filesystem::create_directory(scratch.path() / "taken");
    EXPECT_EQ(writeFileAtomically(scratch.path() / "taken", bytesOf("x")).error().code(), EISDIR);
    EXPECT_EQ(writeFileAtomically(scratch.path() / "none" / "file", bytesOf("x")).error().code(), ENOENT);
    EXPECT_FALSE(writeFileAtomically(scratch.path() / "", bytesOf("x")));
    EXPECT_THAT(scratch.names(), ElementsAre("taken"));
}

// Which way to a temporary file is taken is up to the file system; both keep the same promises.
TEST(TemporaryFile, GoesAwayUnlessPublished) {
    for (const auto naming : {TemporaryFile::Naming::whenPublished, TemporaryFile::Naming::atOnce}) {
        const ScratchDirectory scratch;
        const FileDescriptor directory(::open(scratch.path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        ASSERT_TRUE(TemporaryFile::create(directory, 0600, naming));
        EXPECT_THAT(scratch.names(), IsEmpty());
        auto kept = TemporaryFile::create(directory, 0600, naming);
        ASSERT_EQ(::write(kept->file().get(), "kept", 4), 4);
        ASSERT_TRUE(kept->publish("file"));
        EXPECT_THAT(scratch.names(), ElementsAre("file"));
        EXPECT_EQ(contentOf(scratch.path() / "file"), "kept");
    }
}

TEST(AtomicFile, TakesAwayWhatAProcessKilledWhilePublishingLeft) {
    const ScratchDirectory scratch;
    const pid_t child = ::fork();
    if (child == 0) {
        const FileDescriptor directory(::open(scratch.path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        auto file = TemporaryFile::create(directory, 0600);
        std::filesystem::create_directories(scratch.path() / "file" / "in the way");
        (void)file->publish("file"); // has a name by now, and cannot get the final one
        ::_exit(file->file() ? 0 : 1);
    }
    ASSERT_EQ(::waitpid(child, nullptr, 0), child);
    std::filesystem::remove_all(scratch.path() / "file");
    ASSERT_THAT(scratch.names(), testing::SizeIs(1)) << "the file that was left";
    ASSERT_TRUE(writeFileAtomically(scratch.path() / "file", bytesOf("new")));
    EXPECT_THAT(scratch.names(), ElementsAre("file"));
}

} // namespace
} // namespace glimmerly
