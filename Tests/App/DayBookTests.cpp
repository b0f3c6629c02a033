#include <algorithm>

#include <gtest/gtest.h>

#include "Support/StoreOfADay.h"

namespace stintbook {

TEST(DayBook, KeepsADayReadyWhenMoreIsRecorded)
{
    StoreOfADay fixture;
    auto book = fixture.book();
    fixture.makeReady();

    auto late = fixture.store->segments().segments(fixture.hours(9, 10))->front();
    late.id = SegmentID::random();
    late.start = fixture.at(21);
    late.end = fixture.at(22);
    ASSERT_TRUE(fixture.store->segments().save(std::array{late}));
    const auto opened = *book.open(fixture.day);
    EXPECT_EQ(opened.status, ReviewedDayStatus::ready);
    EXPECT_EQ(opened.unreviewedDuration, Seconds{3600});
    const auto listed = *book.list(fixture.day, fixture.day);
    ASSERT_EQ(listed.size(), 1U);
    EXPECT_EQ(listed.front().recordsState, RecordsDayState::readyToBill);
    EXPECT_EQ(listed.front().unreviewedDuration, Seconds{3600});
}

TEST(DayBook, ShowsAfterItsOwnEditWhatOthersHaveWrittenSince)
{
    StoreOfADay world;
    EditSession session;
    DayBook book(*world.store, world.calendar, &session);
    const auto ids = world.blockIDs();
    const auto first = std::span(ids).first(1);
    const auto last = std::span(ids).last(1);
    const auto ignored = [&] {
        return std::ranges::count_if(book.open(world.day)->content().blocks,
                                     [](const WorkBlock& block) { return block.review.isIgnored; });
    };
    const auto unreviewed = [&] { return book.list(std::nullopt, std::nullopt)->front().unreviewedDuration; };
    const auto all = unreviewed();
    ASSERT_TRUE(book.ignore(world.day, first));
    const auto withoutFirst = unreviewed();
    EXPECT_LT(withoutFirst, all);
    const auto elsewhere = world.open();
    ASSERT_TRUE(DayBook(*elsewhere, world.calendar).ignore(world.day, last));
    EXPECT_EQ(ignored(), 2);
    EXPECT_LT(unreviewed(), withoutFirst);

    // The same connection, by another book.
    ASSERT_TRUE(book.restore(world.day, first));
    ASSERT_TRUE(world.book().restore(world.day, last));
    EXPECT_EQ(ignored(), 0);
    EXPECT_EQ(unreviewed(), all);
}

TEST(DayBook, SeesTheSameSecondOnceHoweverItsDayIsCut)
{
    StoreOfADay fixture;
    auto book = fixture.book();
    const auto ids = fixture.blockIDs();
    ASSERT_TRUE(book.assign(fixture.day, ids, fixture.target()));
    ASSERT_TRUE(book.freeze(fixture.day, std::span(ids).first(1)));

    DayBook elsewhere(*fixture.store, *CalendarContext::inZone("America/New_York"));
    const auto day = elsewhere.calendar().dayOf(fixture.at(9));
    const auto opened = *elsewhere.open(day);
    Seconds free;
    for (const auto& block : opened.content().blocks)
        free += block.interval().length();
    EXPECT_EQ(free, Seconds{5400});
    EXPECT_TRUE(opened.content().items.empty());
    EXPECT_EQ(elsewhere.list(std::nullopt, std::nullopt)->size(), 2U);
}

} // namespace stintbook
