#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "Base/Json.h"

namespace stintbook {
namespace {

template <typename Fill> std::string json(Fill fill, JsonWriter::Layout layout = JsonWriter::Layout::compact)
{
    std::string text;
    JsonWriter writer(text, layout);
    fill(writer);
    return text;
}

TEST(JsonWriter, WritesEachKindOfValueInItsForm)
{
    const auto text = json([](JsonWriter& writer) {
        writer.object([&] {
            writer.member("amount", *Decimal::parse("12345678901234567890.10"));
            writer.member("at", Instant{1700000000.25});
            writer.member("count", 3);
            writer.member("id", *UUID::parse("0f8fad5b-d9cb-469f-a165-70867728950e"));
            writer.member("left out", std::optional<bool>());
            writer.member("present", std::optional(true));
            writer.key("list");
            writer.array(std::vector{1.5, 2.0}, [&](double number) { writer.value(number); });
        });
    });
    EXPECT_EQ(text,
              R"({"amount":12345678901234567890.1,"at":1700000000.25,"count":3,)"
              R"("id":"0F8FAD5B-D9CB-469F-A165-70867728950E","present":true,"list":[1.5,2]})");
}

TEST(JsonWriter, EscapesNoMoreThanItMustAndRepairsIllFormedText)
{
    const auto text = json([](JsonWriter& writer) { writer.value(std::string("a/\"\\\n\x01é\xFF")); });
    EXPECT_EQ(text, "\"a/\\\"\\\\\\n\\u0001é\uFFFD\"");
    EXPECT_EQ(json([](JsonWriter& writer) { writer.value(std::string_view()); }), "\"\"");
    EXPECT_EQ(json([](JsonWriter& writer) { writer.value(std::nan("")); }), "null");
}

TEST(JsonWriter, IndentsWhenAsked)
{
    const auto text = json([](JsonWriter& writer) { writer.object([&] { writer.member("a", 1); }); },
                           JsonWriter::Layout::indented);
    EXPECT_EQ(text, "{\n  \"a\": 1\n}");
}

TEST(ShortestText, ReadsBackToTheSameDouble)
{
    EXPECT_EQ(shortestText(0.1), "0.1");
    EXPECT_EQ(shortestText(-0.0), "0");
    EXPECT_EQ(shortestText(1700000000), "1700000000");
    EXPECT_EQ(shortestText(1e20), "100000000000000000000");
    EXPECT_EQ(shortestText(1e300), "1e+300");

    std::mt19937_64 random(3);
    for (int i = 0; i < 5000; ++i) {
        const auto number = std::bit_cast<double>(random());
        if (!std::isfinite(number))
            continue;
        const auto read = parseJson(shortestText(number));
        ASSERT_TRUE(read) << shortestText(number);
        EXPECT_EQ(read->GetDouble(), number);
    }
}

TEST(ParseJson, SaysWhereAndWhatIsWrong)
{
    const auto broken = parseJson(R"({"a":1,})");
    ASSERT_FALSE(broken);
    EXPECT_TRUE(broken.error().starts_with("at byte 7: ")) << broken.error();
    for (const auto* text : {"", "{} x", "[1 2]", "\"\xFF\"", "nul", "01"})
        EXPECT_FALSE(parseJson(text)) << text;
}

TEST(ParseJson, StandsAnyDepth)
{
    const std::string deep = std::string(1'000'000, '[') + std::string(1'000'000, ']');
    EXPECT_TRUE(parseJson(deep));
    EXPECT_FALSE(parseJson(std::string(1'000'000, '[')));
}

} // namespace
} // namespace stintbook
