#include "tests/support/UpdateArchive.h"

#include "platform/linux/updates/archive/UnpackedFolder.h"
#include "platform/linux/updates/archive/UpdateKey.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

namespace fs = std::filesystem;

Result<void> unpack(const std::string& archive, const fs::path& folder, const std::stop_token& stop = {}) {
    fs::create_directories(folder);
    auto unpacked = UnpackedFolder::open(folder, stop);
    return unpacked ? readArchive(bytesOf(archive), *unpacked) : failure(unpacked.error());
}

TEST(UpdateKey, AcceptsItsOwnersSignatureOfExactlyTheseBytes) {
    const SigningKey owner;
    const std::string content = "an archive";
    const auto key = UpdateKey::fromBase64(owner.publicKey());
    ASSERT_TRUE(key);
    EXPECT_TRUE(key->hasSigned(bytesOf(content), owner.signatureOf(content)));
    EXPECT_TRUE(key->hasSigned({}, owner.signatureOf("")));

    std::string flipped = content;
    for (std::size_t bit = 0; bit < 8 * content.size(); ++bit) {
        flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << (bit % 8)));
        EXPECT_FALSE(key->hasSigned(bytesOf(flipped), owner.signatureOf(content))) << bit;
        flipped = content;
    }
    EXPECT_FALSE(key->hasSigned(bytesOf(content.substr(1)), owner.signatureOf(content)));
    EXPECT_FALSE(key->hasSigned(bytesOf(content), SigningKey().signatureOf(content)));
    for (const char* text : {"", "A", "AAAA", "no Base64"}) {
        EXPECT_FALSE(key->hasSigned(bytesOf(content), text)) << text;
        EXPECT_FALSE(UpdateKey::fromBase64(text)) << text;
    }
}

TEST(UpdateArchive, UnpacksTheOneFolderItHolds) {
    const std::string program(300'000, 'p');
    const mode_t mask = ::umask(077); // which is not what others may do with the program
    for (const auto compression : {Compression::gzip, Compression::zstd}) {
        const ScratchDirectory scratch;
        const auto archive = archiveOf({{.path = "G-2/", .kind = AE_IFDIR, .mode = 0755},
                                        {.path = "G-2/bin/g", .content = program, .mode = 0755},
                                        {.path = "G-2/share/", .kind = AE_IFDIR, .mode = 0700},
                                        {.path = "G-2/share/empty", .mode = 06644}},
                                       compression);
        const auto outcome = unpack(archive, scratch.path() / "to");
        ASSERT_TRUE(outcome) << outcome.error().description();
        EXPECT_EQ(contentOf(scratch.path() / "to/bin/g"), program);
        EXPECT_EQ(modeOf(scratch.path() / "to/bin/g"), 0755u);
        EXPECT_EQ(modeOf(scratch.path() / "to/share/empty"), 0644u);
        EXPECT_EQ(modeOf(scratch.path() / "to/share"), 0755u);
        EXPECT_FALSE(unpack(archive, scratch.path() / "to")) << "nothing that exists is written to";
        std::stop_source stop;
        stop.request_stop();
        EXPECT_FALSE(unpack(archive, scratch.path() / "given up", stop.get_token()));
        EXPECT_TRUE(fs::is_empty(scratch.path() / "given up"));
        for (std::size_t length = 0; length < archive.size(); length += 1 + archive.size() / 20)
            EXPECT_FALSE(unpack(archive.substr(0, length), scratch.path() / std::to_string(length)))
                << length;
    }
    ::umask(mask);
}

TEST(UpdateArchive, NothingLeavesTheFolder) {
    const std::vector<std::vector<TestEntry>> wicked = {
        {},
        {{.path = "/G/a"}},
        {{.path = "../a"}},
        {{.path = "G/../../a"}},
        {{.path = "G/./a"}},
        {{.path = "./G/a"}},
        {{.path = "G//a"}},
        {{.path = "G/a\n"}},
        {{.path = "G/\xc3\xa4"}},
        {{.path = "a"}},
        {{.path = "G/a"}, {.path = "H/a"}},
        {{.path = "G/a"}, {.path = "G/a"}},
        {{.path = "G/a"}, {.path = "G/a/b"}},
        {{.path = "G/" + std::string(300, 'a')}},
        {{.path = "G/up", .kind = AE_IFLNK, .target = ".."}, {.path = "G/up/a"}},
        {{.path = "G/up", .kind = AE_IFLNK, .target = "inside"}},
        {{.path = "G/a"}, {.path = "G/b", .sameFileAs = "G/a"}},
        {{.path = "G/b", .sameFileAs = "/etc/hostname"}},
        {{.path = "G/pipe", .kind = AE_IFIFO}},
        {{.path = "G", .content = "a file"}},
    };
    for (const auto& entries : wicked) {
        const ScratchDirectory scratch;
        const std::string name = entries.empty() ? "(none)" : entries.back().path;
        EXPECT_FALSE(unpack(archiveOf(entries), scratch.path() / "in/to")) << name;
        EXPECT_EQ(scratch.names(), std::vector<std::string>{"in"}) << name;
        EXPECT_EQ(namesIn(scratch.path() / "in"), std::vector<std::string>{"to"}) << name;
    }
    const ScratchDirectory scratch;
    EXPECT_FALSE(unpack(std::string(100'000, 'x'), scratch.path() / "garbage"));
}

/// Takes everything and keeps nothing.
struct Nowhere : ArchiveContents {
    Result<void> addDirectory(const std::string&) override { return {}; }
    Result<void> beginFile(const std::string&, FileUse) override { return {}; }
    Result<void> addBytes(std::span<const std::byte>) override { return {}; }
    Result<void> endFile() override { return {}; }
};

TEST(UpdateArchive, RefusesOneThatUnpacksToTooMuch) {
    const auto archive = archiveOf({{.path = "G/a", .content = std::string(1'000'000, 'a')},
                                    {.path = "G/b", .content = std::string(1'000'000, 'b')}});
    Nowhere nowhere;
    EXPECT_TRUE(readArchive(bytesOf(archive), nowhere, {.entries = 2, .unpacked = 2'000'000}));
    EXPECT_FALSE(readArchive(bytesOf(archive), nowhere, {.entries = 1, .unpacked = 2'000'000}));
    EXPECT_FALSE(readArchive(bytesOf(archive), nowhere, {.entries = 2, .unpacked = 1'999'999}));
}

} // namespace
} // namespace glimmerly
