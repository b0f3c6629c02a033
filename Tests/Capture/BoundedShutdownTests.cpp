#include <functional>
#include <thread>

#include <gtest/gtest.h>

#include "Capture/BoundedShutdown.h"

namespace stintbook {
namespace {

TEST(BoundedShutdown, TakesTheOperationsValueFromAnotherThread)
{
    std::jthread worker;
    const auto outcome = BoundedShutdown::run<int>(
        [&](const auto& complete) { worker = std::jthread([complete] { complete(7); }); }, Seconds{60});
    EXPECT_EQ(outcome, BoundedShutdown::Outcome<int>(7));
}

TEST(BoundedShutdown, KeepsTheFirstOutcomeWhichMayBeTheDeadline)
{
    std::function<void(int)> late;
    const auto outcome =
        BoundedShutdown::run<int>([&](const auto& complete) { late = complete; }, Seconds{0});
    EXPECT_EQ(outcome, BoundedShutdown::Outcome<int>(BoundedShutdown::DeadlineExpired{}));
    late(7);

    FirstOutcome<int> first;
    first.offer(1);
    first.offer(2);
    EXPECT_EQ(first.waitFor(Seconds{0}, 3), 1);
}

} // namespace
} // namespace stintbook
