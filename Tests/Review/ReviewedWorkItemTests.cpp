#include <functional>

#include <gmock/gmock.h>

#include "Support/HandMadeDay.h"

namespace stintbook {
namespace {

using enum ReviewedItemProblem;

struct BrokenItem {
    std::function<void(ReviewedWorkItem&)> breakIt;
    ReviewedItemProblem expected;
};

TEST(ReviewedWorkItem, NamesTheFirstInvariantThatIsBroken)
{
    HandMadeDay day;
    const Seconds second{1};
    const BrokenItem cases[] = {
        {[](auto& item) { item.end = item.start; }, emptyInterval},
        {[&](auto& item) { item.start = day.content.bounds.start - second; }, crossesLocalDay},
        {[&](auto& item) { item.end = day.content.bounds.end + second; }, crossesLocalDay},
        {[](auto& item) { item.day.timeZoneIdentifier = "Nowhere/Nowhere"; }, crossesLocalDay},
        {[](auto& item) { item.origin = ReviewedItemOrigin::manual; }, manualItemHasSlices},
        {[](auto& item) { item.slices.clear(); }, observedItemHasNoSlices},
        {[](auto& item) { item.slices[0].end = item.slices[0].start; }, sliceNotPositive},
        {[&](auto& item) { item.slices[0].start = item.start - second; }, sliceOutsideItem},
        {[&](auto& item) { item.slices[0].start = item.start + second; }, slicesNotContiguous},
        {[&](auto& item) { item.slices[0].end = item.end - second; }, slicesNotContiguous},
        {[&](auto& item) { item.slices.push_back(item.slices[0]); }, slicesNotContiguous},
    };
    const auto whole = day.addItem(day.hours(9, 10), day.toSite);
    EXPECT_EQ(problem(whole), std::nullopt);
    EXPECT_EQ(problem(day.addItem(day.hours(0, 24), day.toSite)), std::nullopt);
    for (const auto& [breakIt, expected] : cases) {
        auto item = whole;
        breakIt(item);
        ASSERT_TRUE(problem(item));
        EXPECT_EQ(rawValue(*problem(item)), rawValue(expected));
    }
}

} // namespace
} // namespace stintbook
