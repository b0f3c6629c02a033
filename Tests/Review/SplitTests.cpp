#include <gmock/gmock.h>

#include "Review/Split.h"
#include "Support/HandMadeDay.h"

namespace stintbook {
namespace {

using testing::ElementsAre;

TEST(Split, CutsTheSliceAtTheInstantAndKeepsAllElseInBothParts)
{
    HandMadeDay day;
    auto item = day.addItem(day.hours(9, 10), day.toArchive);
    item.description = "Review";
    const auto segment = item.slices[0].segmentID;
    const auto mutation = split(item, day.at(9, 20), day.context());

    ASSERT_TRUE(mutation);
    ASSERT_EQ(mutation->upserts.size(), 2);
    EXPECT_THAT(mutation->deletions, ElementsAre(item.id));
    auto first = item;
    first.id = mutation->upserts[0].id;
    first.end = day.at(9, 20);
    first.slices = {{segment, day.at(9), day.at(9, 20)}};
    auto second = item;
    second.id = mutation->upserts[1].id;
    second.start = day.at(9, 20);
    second.slices = {{segment, day.at(9, 20), day.at(10)}};
    EXPECT_THAT(mutation->upserts, ElementsAre(first, second));
    EXPECT_NE(second.id, first.id);
}

TEST(Split, RefusesAPointBehindTheMidnightOfAnotherZone)
{
    HandMadeDay day;
    const auto late = day.addItem(day.hours(15, 17), day.toSite);
    day.calendar = *CalendarContext::inZone("Asia/Tokyo");
    EXPECT_EQ(split(late, day.at(16, 30), day.context()).error(),
              ReviewedEditProblem(ReviewedEditRefusal::splitPointOutsideDay));
}

} // namespace
} // namespace stintbook
