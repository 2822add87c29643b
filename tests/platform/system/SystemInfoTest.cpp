#include "platform/system/SystemInfo.h"

#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

TEST(SystemInfo, NamesTheSystemAndHidesItsIdentifier) {
    const ScratchDirectory root;
    std::filesystem::create_directories(root.path() / "etc");
    const std::string raw = "0123456789abcdef0123456789abcdef";
    writeContent(root.path() / "etc/os-release", "ID=x\nPRETTY_NAME=\"A \\\"system\\\" 12 \xe9\"\n");
    writeContent(root.path() / "etc/machine-id", raw + "\n");
    const SystemInfo info = systemInfo(root.path());
    EXPECT_EQ(info.osVersion, "A \"system\" 12 \uFFFD");
    EXPECT_FALSE(info.architecture.empty());
    EXPECT_EQ(info.machineID.size(), 36u);
    EXPECT_EQ(systemInfo(root.path()).machineID, info.machineID) << "the same on every start";

    writeContent(root.path() / "etc/machine-id", "1" + raw.substr(1));
    EXPECT_NE(systemInfo(root.path()).machineID, info.machineID);
    const ScratchDirectory empty;
    EXPECT_FALSE(systemInfo(empty.path()).machineID.empty());
    EXPECT_FALSE(systemInfo(empty.path()).osVersion.empty());
}

} // namespace
} // namespace glimmerly
