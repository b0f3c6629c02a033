#include <gmock/gmock.h>

#include "Review/ReviewedDayApproval.h"
#include "Support/HandMadeDay.h"

namespace stintbook {
namespace {

std::vector<ReviewedWorkItem> twoItems()
{
    HandMadeDay day;
    auto observed = day.addItem({{1795159800.5}, {1795163400}}, day.toSite);
    observed.id = {HandMadeDay::numbered(0xAA)};
    observed.slices = {{{HandMadeDay::numbered(0xC1)}, {1795159800.5}, {1795160400}},
                       {{HandMadeDay::numbered(0xC2)}, {1795160400}, {1795163400}}};
    auto manual = day.addItem({{1795163400}, {1795167000}}, {day.acme.id, day.shop.id, false},
                              ReviewedItemOrigin::manual);
    manual.id = {HandMadeDay::numbered(0xAB)};
    manual.description = "Prüf|ung";
    return {observed, manual};
}

TEST(ReviewedDayRevision, IsTheDigestOfTheDaysCanonicalText)
{
    const auto items = twoItems();
    EXPECT_EQ(canonicalText(items),
              "id=00000000-0000-0000-0000-0000000000aa|start=41dabffdbe200000|end=41dac00142000000|"
              "origin=observed-reviewed|client=00000000-0000-0000-0000-000000000001|"
              "project=00000000-0000-0000-0000-000000000003|billable=1|description=0:|"
              "slices=00000000-0000-0000-0000-0000000000c1@41dabffdbe200000-41dabffe54000000,"
              "00000000-0000-0000-0000-0000000000c2@41dabffe54000000-41dac00142000000\n"
              "id=00000000-0000-0000-0000-0000000000ab|start=41dac00142000000|end=41dac004c6000000|"
              "origin=manual|client=00000000-0000-0000-0000-000000000001|"
              "project=00000000-0000-0000-0000-000000000004|billable=0|description=9:Prüf|ung|slices=");
    EXPECT_EQ(revision({items[1], items[0]}).value,
              "cf2be5f4ef59f39ecc249a309121d58c3534653ef8c34f89921eb9294cc0b016");
    EXPECT_EQ(revision({}).value, "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
}

TEST(ReviewedDayRevision, DependsOnWhatIsBilledAndOnNothingElse)
{
    auto items = twoItems();
    // Of one start, so that their identifiers settle the order.
    items[1].start = items[0].start;
    auto ignored = items[0];
    ignored.id = {HandMadeDay::numbered(0xFF)};
    ignored.disposition = ReviewedItemDisposition::ignored;
    EXPECT_EQ(revision({items[1], ignored, items[0]}), revision(items));

    auto described = items;
    *described[1].description += ".";
    EXPECT_NE(revision(described), revision(items));
}

} // namespace
} // namespace stintbook
