#include <algorithm>
#include <atomic>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "Base/Executor.h"

namespace stintbook {
namespace {

TEST(SerialExecutor, RunsJobsOneAtATimeInTheOrderOfEachPoster)
{
    std::vector<int> seen;
    {
        SerialExecutor executor("order");
        std::vector<std::thread> posters;
        for (int poster = 0; poster < 4; ++poster) {
            posters.emplace_back([&executor, &seen, poster] {
                for (int i = 0; i < 250; ++i)
                    executor.post([&seen, value = i * 4 + poster] { seen.push_back(value); });
            });
        }
        for (auto& poster : posters)
            poster.join();
    }
    ASSERT_EQ(seen.size(), 1000U);
    std::vector<int> last(4, -1);
    for (const int value : seen) {
        EXPECT_LT(last[static_cast<std::size_t>(value % 4)], value);
        last[static_cast<std::size_t>(value % 4)] = value;
    }
}

TEST(SerialExecutor, RunsBeforeItEndsWhatItsJobsPosted)
{
    int depth = 0;
    {
        SerialExecutor executor("nested");
        executor.post([&] { executor.post([&] { executor.post([&] { depth = 3; }); }); });
    }
    EXPECT_EQ(depth, 3);
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
    const auto executor = std::make_shared<SerialExecutor>("home");
    const Confined<std::vector<std::thread::id>> confined(executor,
                                                          std::make_shared<std::vector<std::thread::id>>());
    std::thread other([&] {
        for (int i = 0; i < 100; ++i)
            confined.wait([](auto& ids) { ids.push_back(std::this_thread::get_id()); });
    });
    for (int i = 0; i < 100; ++i)
        confined.wait([](auto& ids) { ids.push_back(std::this_thread::get_id()); });
    other.join();

    const auto ids = confined.ask([](auto& all) { return all; }).get();
    ASSERT_EQ(ids.size(), 200U);
    EXPECT_EQ(std::count(ids.begin(), ids.end(), ids.front()), 200);
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
