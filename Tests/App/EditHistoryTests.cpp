#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "Store/PersistentReviewStore.h"
#include "Support/StoreOfADay.h"

namespace stintbook {
namespace {

class EditHistoryTest : public testing::Test {
protected:
    /// Everything that an edit can change.
    struct State {
        std::vector<WorkBlock> blocks;
        std::vector<ReviewedWorkItem> items;
        std::optional<ReviewedDayApproval> approval;

        friend bool operator==(const State&, const State&) = default;
    };

    /// As the book that edits tells it, which may remember it from its last edit, and as it is stored.
    State state()
    {
        const auto told = contentOf(book);
        EXPECT_TRUE(told == contentOf(world.book()));
        return told;
    }

    State contentOf(const DayBook& of) const
    {
        auto opened = of.open(world.day);
        return {opened->content().blocks, opened->content().items,
                *world.store->review().approval(world.day)};
    }

    UUID anyWork()
    {
        const auto now = state();
        const auto number = below(now.blocks.size() + now.items.size());
        return number < now.blocks.size() ? now.blocks[number].id
                                          : now.items[number - now.blocks.size()].id.uuid;
    }

    /// Some edit of some work; whether it was done.
    bool edit()
    {
        const std::vector ids{anyWork(), anyWork()};
        const auto one = std::span(ids).first(1);
        const auto at = world.at(9) + Seconds{static_cast<double>(below(3 * 3600))};
        switch (below(9)) {
        case 0:
            return book.assign(world.day, ids, world.target()).has_value();
        case 1:
            return book.confirm(world.day, one).has_value();
        case 2:
            return book.ignore(world.day, one).has_value();
        case 3:
            return book.restore(world.day, one).has_value();
        case 4:
            return book.split(world.day, ids.front(), at).has_value();
        case 5:
            return book.merge(world.day, ids).has_value();
        case 6:
            return book.markReady(world.day, at).has_value();
        case 7:
            return book.describe(world.day, ids.front(), "Words " + std::to_string(below(9))).has_value();
        default:
            return book
                .add(world.day, {at + Seconds{4 * 3600}, at + Seconds{4 * 3600 + 300}}, world.target(),
                     std::nullopt)
                .has_value();
        }
    }

    std::size_t below(std::size_t bound) { return random() % bound; }

    StoreOfADay world;
    EditSession session;
    DayBook book{*world.store, world.calendar, &session};
    std::mt19937 random{7};
};

TEST_F(EditHistoryTest, TakesEveryEditBackAndDoesItAgain)
{
    std::vector<State> states{state()};
    while (states.size() < 120) {
        if (edit())
            states.push_back(state());
    }
    EXPECT_TRUE(std::ranges::any_of(states, [](const State& one) { return one.approval.has_value(); }));
    for (auto step = states.size() - 1; step > 0; --step) {
        ASSERT_TRUE(book.undo()) << step;
        ASSERT_EQ(state(), states[step - 1]) << step;
    }
    EXPECT_EQ(message(book.undo().error()), "There is no edit to undo.");
    for (std::size_t step = 1; step < states.size(); ++step) {
        ASSERT_TRUE(book.redo()) << step;
        ASSERT_EQ(state(), states[step]) << step;
    }
    EXPECT_EQ(message(book.redo().error()), "There is no edit to redo.");
}

TEST_F(EditHistoryTest, LeavesWorkAloneThatSomebodyElseHasChangedSince)
{
    const auto ids = world.blockIDs();
    ASSERT_TRUE(book.assign(world.day, std::span(ids).first(1), world.target()));
    ASSERT_TRUE(book.assign(world.day, std::span(ids).last(1), world.target()));
    ASSERT_TRUE(world.book().ignore(world.day, std::span(ids).last(1)));
    const auto now = state();
    EXPECT_EQ(message(book.undo().error()), "The day has changed since, so the edit was left as it is.");
    EXPECT_EQ(state(), now);

    // Once the day is as it was, what went before can be taken back.
    const auto item = now.items.front().id.uuid;
    EditSession others;
    DayBook other(*world.store, world.calendar, &others);
    ASSERT_TRUE(other.restore(world.day, std::span(&item, 1)));
    ASSERT_TRUE(other.undo());
    EXPECT_EQ(state(), now);
    EXPECT_FALSE(book.undo());
}

} // namespace
} // namespace stintbook
