#include "platform/linux/updates/feed/VersionOrder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace glimmerly {
namespace {

/// Groups of names for the same version, from the oldest to the newest: every pair is compared.
TEST(VersionOrder, KnowsNumbersPreReleasesAndLengths) {
    const std::vector<std::vector<std::string>> ages = {
        {"", "0", "0.0"},
        {"0.9"},
        {"1.0-1", "1-01"},
        {"1.0-alpha", "1.0.0-ALPHA", "1.0alpha"},
        {"1.0-alpha.1", "1.0-alpha1"},
        {"1.0-alpha.2"},
        {"1.0-alpha.10"},
        {"1.0b3"},
        {"1.0-rc.1"},
        {"1", "1.0", "1.0.0", "v1.0", "01.00", "1.0+build.7"},
        {"1.0.1"},
        {"1.9"},
        {"1.10", "1.10.0"},
        {"2.0-rc.1.1"},
        {"2"},
        {"18446744073709551616"},
        {"184467440737095516160000000000.1"},
    };
    for (std::size_t i = 0; i < ages.size(); ++i)
        for (const auto& left : ages[i])
            for (std::size_t j = 0; j < ages.size(); ++j)
                for (const auto& right : ages[j])
                    EXPECT_EQ(compareVersions(left, right), i <=> j) << left << " and " << right;
}

} // namespace
} // namespace glimmerly
