#include "telemetry/TelemetryValue.h"

#include "base/Uuid.h"
#include "telemetry/FirstCharacters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace glimmerly {
namespace {

TEST(TelemetryValue, KeepsPlainValuesAndDescribesOthers) {
    using Json = TelemetryValue::Json;
    const std::string text = "a/ü";
    const std::pair<TelemetryValue, Json> cases[] = {
        {text, Json("a/ü")},
        {"literal", Json("literal")},
        {std::string_view("\xff/\xe2\x82!"), Json("\uFFFD/\uFFFD\uFFFD!")},
        {true, Json(true)},
        {-7, Json(std::int64_t{-7})},
        {std::size_t{8}, Json(std::int64_t{8})},
        {std::numeric_limits<std::uint64_t>::max(), Json("18446744073709551615")},
        {1.25, Json(1.25)},
        {0.1F, Json(double{0.1F})},
        {std::nan(""), Json("nan")},
        {std::numeric_limits<float>::infinity(), Json("inf")},
        {-HUGE_VAL, Json("-inf")},
        {WallTime(std::chrono::milliseconds(1'500)), Json("1970-01-01T00:00:01.500Z")},
        {Uuid(Uuid::Bytes{}), Json("00000000-0000-0000-0000-000000000000")},
    };
    for (const auto& [value, json] : cases)
        EXPECT_EQ(value.json(), json);
}

TEST(FirstCharacters, CountsWhatAPersonSees) {
    EXPECT_EQ(firstCharacters("abc", 5), "abc");
    EXPECT_EQ(firstCharacters("abc", 2), "ab");
    EXPECT_EQ(firstCharacters("e\u0301e\u0301e", 2), "e\u0301e\u0301");
    EXPECT_EQ(firstCharacters("👩‍👩‍👧x", 1), "👩‍👩‍👧");
}

} // namespace
} // namespace glimmerly
