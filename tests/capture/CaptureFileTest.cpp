#include "capture/service/CaptureFile.h"

#include "tests/support/ProcessState.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <regex>

namespace glimmerly {
namespace {

TEST(CaptureFile, IsANewNameInTheUsersTemporaryDirectory) {
    const ScratchDirectory scratch;
    const ScopedEnvironment runtime("XDG_RUNTIME_DIR", scratch.path().c_str());
    const auto first = makeCaptureFileURL();
    const auto second = makeCaptureFileURL();
    EXPECT_EQ(first.parent_path(), scratch.path() / "app.glimmerly.Glimmerly");
    const std::regex form("glimmerly-capture-[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\.png");
    EXPECT_TRUE(std::regex_match(first.filename().string(), form)) << first;
    EXPECT_NE(first, second);
    EXPECT_FALSE(std::filesystem::exists(first));
    EXPECT_EQ(modeOf(first.parent_path()), 0700U);
}

TEST(CaptureFile, HasANameEvenWhereTheDirectoryCannotBeMade) {
    const ScratchDirectory scratch;
    std::filesystem::create_symlink("/", scratch.path() / "app.glimmerly.Glimmerly");
    const ScopedEnvironment runtime("XDG_RUNTIME_DIR", scratch.path().c_str());
    EXPECT_EQ(makeCaptureFileURL().parent_path(), scratch.path() / "app.glimmerly.Glimmerly");
}

} // namespace
} // namespace glimmerly
