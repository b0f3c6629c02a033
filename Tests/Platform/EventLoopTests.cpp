#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "Platform/EventLoop.h"

namespace stintbook {

namespace {

constexpr Seconds limit{10};

} // namespace

TEST(EventLoop, RunsTimersInTheOrderOfTheirMomentsAndRepeatsUntilTheHandleGoes)
{
    EventLoop loop;
    std::string order;
    auto late = loop.after({0.02}, [&] { order += 'l'; });
    auto early = loop.after({0.005}, [&] { order += 'e'; });
    auto cancelled = loop.after({0.01}, [&] { order += 'c'; });
    cancelled.reset();
    std::unique_ptr<Timers::Scheduled> ticking;
    int ticks = 0;
    ticking = loop.every({0.001}, [&] {
        if (++ticks == 3)
            ticking.reset(); // From inside its own work.
    });
    EXPECT_TRUE(loop.runUntil([&] { return order.size() == 2 && ticks == 3; }, limit));
    EXPECT_EQ(order, "el");
    EXPECT_FALSE(loop.runUntil([&] { return ticks > 3; }, {0.02}));
}

TEST(EventLoop, MeetsAWallClockDeadlineAlsoOneThatHasPassed)
{
    EventLoop loop;
    SystemTimeSource clock;
    std::string fired;
    auto deadline = clock.now() + Seconds{0.02};
    auto future = loop.at(deadline, [&] { fired += clock.now() >= deadline ? 'f' : 'e'; });
    auto past = loop.at({1000}, [&] { fired += 'p'; });
    auto never = loop.at(clock.now() + Seconds{1e12}, [&] { fired += 'n'; });
    EXPECT_TRUE(loop.runUntil([&] { return fired.size() == 2; }, limit));
    EXPECT_EQ(fired, "pf");
}

TEST(EventLoop, RunsWhatOtherThreadsPostInTheirOrder)
{
    EventLoop loop;
    std::vector<int> seen;
    std::thread poster([&] {
        for (int i = 0; i < 1000; ++i)
            loop.post([&seen, i] { seen.push_back(i); });
        loop.post([&loop] { loop.stop(); });
    });
    loop.run();
    poster.join();
    ASSERT_EQ(seen.size(), 1000u);
    EXPECT_TRUE(std::ranges::is_sorted(seen));
}

TEST(EventLoop, WatchesADescriptorUntilTheHandleGoesAndLeavesItOpen)
{
    EventLoop loop;
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    std::string received;
    auto watch = loop.watch(ends[0], EventLoop::Readiness::readable, [&] {
        char byte = 0;
        if (read(ends[0], &byte, 1) == 1)
            received += byte;
    });
    ASSERT_EQ(write(ends[1], "ab", 2), 2);
    EXPECT_TRUE(loop.runUntil([&] { return received == "ab"; }, limit));
    watch.reset();
    ASSERT_EQ(write(ends[1], "c", 1), 1);
    EXPECT_FALSE(loop.runUntil([&] { return received.size() > 2; }, {0.01}));
    char byte = 0;
    EXPECT_EQ(read(ends[0], &byte, 1), 1);
    close(ends[0]);
    close(ends[1]);
}

} // namespace stintbook
