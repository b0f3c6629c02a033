#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Base/VirtualTime.h"

namespace stintbook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class VirtualTimeTest : public testing::Test {
protected:
    std::function<void()> note(std::string what)
    {
        return [this, what = std::move(what)] { seen.emplace_back(what, time.now().secondsSinceEpoch); };
    }

    VirtualTime time{Instant{1000}};
    std::vector<std::pair<std::string, double>> seen;
};

TEST_F(VirtualTimeTest, CountsNoSleepAsWaitingButMeetsDeadlinesOnWaking)
{
    const auto waiting = time.after(Seconds{5}, note("waited"));
    const auto deadline = time.at(Instant{1020}, note("deadline"));
    time.sleep(Seconds{100});
    EXPECT_THAT(seen, ElementsAre(std::pair("deadline", 1100.0)));
    EXPECT_EQ(time.awake(), Seconds{0});
    time.advance(Seconds{5});
    EXPECT_EQ(seen.back(), std::pair(std::string("waited"), 1105.0));
}

TEST_F(VirtualTimeTest, ForgetsWhatIsCancelledAlsoByTheWorkItself)
{
    auto cancelled = time.after(Seconds{1}, note("cancelled"));
    std::unique_ptr<Timers::Scheduled> once;
    once = time.every(Seconds{2}, [&] {
        note("once")();
        once.reset();
        cancelled.reset();
    });
    cancelled.reset();
    time.advance(Seconds{10});
    EXPECT_THAT(seen, ElementsAre(std::pair("once", 1002.0)));
}

TEST_F(VirtualTimeTest, WaitsLongerForADeadlineWhenTheClockIsSetBack)
{
    const auto deadline = time.at(Instant{1010}, note("deadline"));
    time.setWall(Instant{900});
    time.advance(Seconds{100});
    EXPECT_THAT(seen, IsEmpty());
    time.advanceTo(Instant{1010});
    EXPECT_THAT(seen, ElementsAre(std::pair("deadline", 1010.0)));
}

} // namespace
} // namespace stintbook
