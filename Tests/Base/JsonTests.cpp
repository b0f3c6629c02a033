#include <bit>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "Base/Json.h"

namespace stintbook {
namespace {

std::string json(const auto& value)
{
    std::string text;
    JsonWriter(text).value(value);
    return text;
}

TEST(JsonWriter, EscapesNoMoreThanItMustAndRepairsIllFormedText)
{
    EXPECT_EQ(json(std::string("a/\"\\\n\x01é\xFF")), "\"a/\\\"\\\\\\n\\u0001é\uFFFD\"");
    EXPECT_EQ(json(std::string_view()), "\"\"");
    EXPECT_EQ(json(std::nan("")), "null");
}

TEST(ShortestText, ReadsBackToTheSameDouble)
{
    EXPECT_EQ(shortestText(0.1), "0.1");
    EXPECT_EQ(shortestText(-0.0), "0");
    EXPECT_EQ(shortestText(1e20), "100000000000000000000");
    std::mt19937_64 random(3);
    for (int i = 0; i < 5000; ++i) {
        const auto number = std::bit_cast<double>(random());
        if (!std::isfinite(number))
            continue;
        EXPECT_EQ(std::strtod(shortestText(number).c_str(), nullptr), number);
    }
}

} // namespace
} // namespace stintbook
