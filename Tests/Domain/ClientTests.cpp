#include <gtest/gtest.h>

#include "Domain/ActivitySegment.h"
#include "Domain/ClientDirectoryRepository.h"

namespace stintbook {
namespace {

std::string colour(std::optional<std::string_view> text)
{
    const auto parsed = ClientColor::fromText(text);
    return parsed ? parsed->hex() : "none";
}

TEST(ClientColor, IsSixUpperCaseDigitsBehindOneSign)
{
    EXPECT_EQ(colour(" #a1b2c3\n"), "#A1B2C3");
    EXPECT_EQ(colour("a1b2c3"), "#A1B2C3");
    EXPECT_EQ(colour(std::nullopt), "none");
    for (const auto* text : {"", "#", "##a1b2c3", "a1b2c", "a1b2c3d", "g1b2c3", "# a1b2c3", "１２３４５６"})
        EXPECT_EQ(colour(text), "none") << text;
}

TEST(ClientRefusals, SayWhatDidNotHappen)
{
    EXPECT_EQ(message(ClientEditError(ProjectOwnershipRefused{})),
              "A project's client cannot be changed. Nothing was saved.");
    EXPECT_EQ(message(ClientEditError(UnreadableRecord{UUID::random(), "rule.match"})),
              "A stored activity record could not be read (field: rule.match).");
}

TEST(SegmentOrder, SettlesTiesByEndAndThenByTheIdentifiersText)
{
    const ActivitySegment first{
        .id = {*UUID::parse("00000000-0000-0000-0000-00000000000A")}, .start = {1}, .end = {2}};
    ActivitySegment second = first;
    second.id = {*UUID::parse("F0000000-0000-0000-0000-000000000000")};
    EXPECT_TRUE(segmentOrder(first, second));
    EXPECT_FALSE(segmentOrder(second, first));
    second.end = {1.5};
    EXPECT_TRUE(segmentOrder(second, first));
}

} // namespace
} // namespace stintbook
