#include <algorithm>
#include <atomic>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "Base/Executor.h"

namespace stintbook {
namespace {

TEST(SerialExecutor, RunsJobsOneAtATimeInTheOrderOfEachPosterAndBeforeItEndsWhatTheyPosted)
{
    std::vector<std::vector<int>> seen(4);
    int total = 0;
    {
        SerialExecutor executor("order");
        std::vector<std::jthread> posters;
        for (auto& ofPoster : seen) {
            posters.emplace_back([&] {
                for (int i = 0; i < 250; ++i)
                    executor.post([&, i] {
                        ofPoster.push_back(i);
                        executor.post([&] { ++total; });
                    });
            });
        }
    }
    EXPECT_EQ(total, 1000);
    for (const auto& ofPoster : seen)
        EXPECT_TRUE(std::ranges::is_sorted(ofPoster));
}

TEST(SerialExecutor, MayBeDestroyedByItsOwnJob)
{
    auto executor = std::make_shared<SerialExecutor>("own");
    std::promise<void> isLast;
    std::promise<void> isGone;
    auto& handle = *executor;
    handle.post([held = std::move(executor), last = isLast.get_future(), &isGone]() mutable {
        last.wait();
        held.reset();
        isGone.set_value();
    });
    isLast.set_value();
    isGone.get_future().wait();
}

TEST(Confined, TouchesItsValueOnlyOnItsExecutor)
{
    using Threads = std::vector<std::thread::id>;
    const Confined<Threads> confined(std::make_shared<SerialExecutor>("home"), std::make_shared<Threads>());
    const auto touchOften = [&] {
        for (int i = 0; i < 100; ++i)
            confined.wait([](Threads& ids) { ids.push_back(std::this_thread::get_id()); });
    };
    std::jthread(touchOften).join();
    touchOften();

    const auto ids = confined.ask([](Threads& all) { return all; }).get();
    ASSERT_EQ(ids.size(), 200U);
    EXPECT_EQ(std::ranges::count(ids, ids.front()), 200);
    EXPECT_NE(ids.front(), std::this_thread::get_id());
}

TEST(Confined, HandsItsResultToAContinuationOnAnotherExecutor)
{
    const Confined<int> confined(std::make_shared<SerialExecutor>("home"), std::make_shared<int>(20));
    SerialExecutor away("away");
    const auto awayThread =
        Confined<int>(std::shared_ptr<Executor>(std::shared_ptr<Executor>(), &away), std::make_shared<int>())
            .wait([](int&) { return std::this_thread::get_id(); });

    std::promise<std::pair<int, std::thread::id>> received;
    confined.ask([](int& value) { return value += 1; }, away,
                 [&received](int result) { received.set_value({result, std::this_thread::get_id()}); });
    EXPECT_EQ(received.get_future().get(), std::pair(21, awayThread));

    std::promise<void> done;
    confined.ask([](int& value) { value = 0; }, away, [&done] { done.set_value(); });
    done.get_future().wait();
    EXPECT_EQ(confined.wait([](int& value) { return value; }), 0);
}

TEST(Confined, KeepsItsValueUntilTheLastJobHasRun)
{
    struct Noted {
        std::atomic<bool>& isGone;
        explicit Noted(std::atomic<bool>& flag)
            : isGone(flag)
        {
        }
        ~Noted() { isGone = true; }
    };
    std::atomic<bool> isGone = false;
    std::promise<void> gate;
    bool wasThere = false;
    {
        const auto executor = std::make_shared<SerialExecutor>("last");
        executor->post([opened = gate.get_future()] { opened.wait(); });
        std::ignore = Confined(executor, std::make_shared<Noted>(isGone)).ask([&](Noted& noted) {
            wasThere = !noted.isGone;
        });
        gate.set_value();
    }
    EXPECT_TRUE(wasThere);
    EXPECT_TRUE(isGone);
}

} // namespace
} // namespace stintbook
