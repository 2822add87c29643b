#include "base/Uuid.h"

#include <gtest/gtest.h>

#include <regex>
#include <unordered_set>

namespace glimmerly {
namespace {

TEST(Uuid, IsCanonicalUpperCaseVersionFourAndNew) {
    const std::regex form("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
    std::unordered_set<Uuid> seen;
    for (int i = 0; i < 1000; ++i) {
        const Uuid id = Uuid::generate();
        EXPECT_TRUE(std::regex_match(id.toString(), form)) << id.toString();
        EXPECT_TRUE(seen.insert(id).second);
    }
}

} // namespace
} // namespace glimmerly
