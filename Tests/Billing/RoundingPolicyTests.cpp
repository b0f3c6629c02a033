#include <random>

#include <gtest/gtest.h>

#include "Billing/RoundingPolicy.h"

namespace stintbook {

namespace {

using enum RoundingPolicy;

TEST(RoundingPolicy, BillsWholeUnitsWithHalvesUpAndNothingForLessThanNoTime)
{
    struct Case {
        int tracked;
        std::optional<RoundingPolicy> policy;
        int billed;
    };
    const std::vector<Case> cases{
        {179, nearestSixMinutes, 0},
        {180, nearestSixMinutes, 360},
        {361, nearestSixMinutes, 360},
        {540, nearestSixMinutes, 720},
        {1, upToNextSixMinutes, 360},
        {720, upToNextSixMinutes, 720},
        {449, nearestFifteenMinutes, 0},
        {450, nearestFifteenMinutes, 900},
        {1, upToNextFifteenMinutes, 900},
        {900, upToNextFifteenMinutes, 900},
        {901, upToNextFifteenMinutes, 1800},
        {361, exact, 361},
        {361, std::nullopt, 361},
        {-400, exact, 0},
        {-400, nearestSixMinutes, 0},
        {-400, upToNextFifteenMinutes, 0},
        {-1, std::nullopt, 0},
    };
    for (const auto& [tracked, policy, billed] : cases)
        EXPECT_EQ(billedSeconds(tracked, policy).text(), Decimal(billed).text()) << tracked << " s";
}

TEST(RoundingPolicy, StaysWithinOneUnitOfTheTrackedTimeAndNeverBelowItWhenRoundingUp)
{
    std::mt19937_64 random(5); // NOLINT(bugprone-random-generator-seed): every run is the same
    for (int round = 0; round < 2000; ++round) {
        const auto tracked = static_cast<int>(1 + random() % 200'000);
        for (const auto& [policy, unit] :
             {std::pair(nearestSixMinutes, 360), std::pair(nearestFifteenMinutes, 900)}) {
            const Decimal off = billedSeconds(tracked, policy) - tracked;
            EXPECT_TRUE(off > -unit / 2 - 1 && off <= unit / 2) << tracked;
        }
        for (const auto& [policy, unit] :
             {std::pair(upToNextSixMinutes, 360), std::pair(upToNextFifteenMinutes, 900)}) {
            const Decimal off = billedSeconds(tracked, policy) - tracked;
            EXPECT_TRUE(off >= 0 && off < unit) << tracked;
        }
    }
}

TEST(RoundingPolicy, NotesTheOneRuleOfAllLinesAndMixedRulesOtherwise)
{
    EXPECT_EQ(roundingNote({}), std::nullopt);
    EXPECT_EQ(roundingNote({nearestSixMinutes, nearestSixMinutes}), "Billed to the nearest 6 minutes");
    EXPECT_EQ(roundingNote({upToNextFifteenMinutes}), "Billed to the up to next 15 minutes");
    EXPECT_EQ(roundingNote({exact}), "Billed to the exact");
    EXPECT_EQ(roundingNote({exact, nearestSixMinutes}), "Billed under mixed rounding rules");
    EXPECT_EQ(roundingNote({std::nullopt}), "Billed under mixed rounding rules");
}

} // namespace

} // namespace stintbook
