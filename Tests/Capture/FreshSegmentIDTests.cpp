#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

#include "Capture/FreshSegmentID.h"

namespace stintbook {
namespace {

TEST(FreshSegmentID, IsUniqueAndBeginsWithTheTimeOfItsMaking)
{
    std::vector<SegmentID> made(10'000);
    std::ranges::generate(made, freshSegmentID);
    EXPECT_EQ(made.front().text()[14], '7');
    EXPECT_TRUE(
        std::ranges::is_sorted(made, {}, [](const SegmentID& id) { return id.text().substr(0, 13); }));
    std::ranges::sort(made);
    EXPECT_EQ(std::ranges::adjacent_find(made), made.end());
}

} // namespace
} // namespace stintbook
