#include <gtest/gtest.h>

#include "App/RuleBook.h"
#include "StoreOfADay.h"

namespace stintbook {

TEST(DayBook, ReviewsADayUntilItIsReadyAndKeepsItReadyWhenMoreIsRecorded)
{
    StoreOfADay fixture;
    auto book = fixture.book();
    const auto blocks = fixture.blockIDs();
    ASSERT_EQ(blocks.size(), 3U);

    const auto refused = book.markReady(fixture.day, fixture.at(20));
    ASSERT_FALSE(refused);
    EXPECT_EQ(message(refused.error()), "Some work has no client and project yet.");
    EXPECT_TRUE(book.open(fixture.day)->content.items.empty());

    const auto assigned = book.assign(fixture.day, std::span(blocks).first(2), fixture.target());
    ASSERT_TRUE(assigned);
    EXPECT_EQ(assigned->blocks.size(), 2U);
    ASSERT_TRUE(book.ignore(fixture.day, std::span(blocks).last(1)));
    const auto approval = book.markReady(fixture.day, fixture.at(20));
    ASSERT_TRUE(approval);

    auto ready = *book.open(fixture.day);
    EXPECT_EQ(ready.status, ReviewedDayStatus::ready);
    EXPECT_EQ(ready.revision, approval->revision);
    EXPECT_EQ(ready.unreviewedDuration, Seconds{0});

    auto late = fixture.store->segments().segments(fixture.hours(9, 10))->front();
    late.id = SegmentID::random();
    late.start = fixture.at(21);
    late.end = fixture.at(22);
    ASSERT_TRUE(fixture.store->segments().save(std::array{late}));
    ready = *book.open(fixture.day);
    EXPECT_EQ(ready.status, ReviewedDayStatus::ready);
    EXPECT_EQ(ready.unreviewedDuration, Seconds{3600});
    const auto listed = *book.list(fixture.day, fixture.day);
    ASSERT_EQ(listed.size(), 1U);
    EXPECT_EQ(listed.front().recordsState, RecordsDayState::readyToBill);
    EXPECT_EQ(listed.front().unreviewedDuration, Seconds{3600});
}

TEST(DayBook, ChangesNothingWhenOneOfSeveralSubjectsIsRefused)
{
    StoreOfADay fixture;
    auto book = fixture.book();
    auto ids = fixture.blockIDs();
    ids.push_back(UUID::random());
    const auto refused = book.assign(fixture.day, ids, fixture.target());
    ASSERT_FALSE(refused);
    EXPECT_TRUE(std::holds_alternative<UnknownWork>(refused.error()));
    const auto opened = *book.open(fixture.day);
    for (const auto& block : opened.content.blocks)
        EXPECT_FALSE(block.effectiveAssignment());
}

TEST(DayBook, ConvertsTheIdleTimeOnce)
{
    StoreOfADay fixture;
    auto book = fixture.book();
    const auto items = book.convertIdle(fixture.day, fixture.idle, fixture.target(), "On the telephone");
    ASSERT_TRUE(items);
    ASSERT_EQ(items->size(), 1U);
    EXPECT_EQ(items->front().interval(), (Interval{fixture.at(11), fixture.at(11, 30)}));
    const auto again = book.convertIdle(fixture.day, fixture.idle, fixture.target(), std::nullopt);
    ASSERT_FALSE(again);
    EXPECT_EQ(message(again.error()),
              "That time is already accounted for. Split, ignore or adjust the existing work first.");
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
    for (const auto& block : opened.content.blocks)
        free += block.interval().length();
    EXPECT_EQ(free, Seconds{5400});
    EXPECT_TRUE(opened.content.items.empty());
    EXPECT_EQ(elsewhere.list(std::nullopt, std::nullopt)->size(), 2U);
}

TEST(RuleBook, StoresWhatItAcceptsInOrderAndRefusesTheRest)
{
    StoreOfADay fixture;
    RuleBook book(*fixture.store);
    const auto general =
        book.add({{.application = "kate", .domain = {}, .title = {}}, fixture.client, fixture.project, {}});
    const auto special = book.add({{.application = {}, .domain = "Docs.Example.Org.", .title = {}},
                                   fixture.client,
                                   fixture.project,
                                   false});
    ASSERT_TRUE(general);
    ASSERT_TRUE(special);
    const auto refused = book.add(
        {{.application = {}, .domain = "no host/", .title = {}}, fixture.client, fixture.project, {}});
    ASSERT_FALSE(refused);
    EXPECT_TRUE(std::holds_alternative<DomainRefused>(std::get<RuleDraftProblem>(refused.error())));
    EXPECT_FALSE(book.add({{}, fixture.client, fixture.project, {}}));

    auto rules = book.list()->attributionRules;
    ASSERT_EQ(rules.size(), 2U);
    EXPECT_EQ(rules[0].id, *special);
    EXPECT_EQ(rules[0].match.browserDomain->host(), "docs.example.org");
    EXPECT_EQ(book.list()->losing, std::set{*general});
    ASSERT_TRUE(book.move(*special, 2));
    EXPECT_EQ(book.list()->attributionRules[1].id, *special);
}

TEST(ClientBook, KeepsRateAndRoundingApartAndRefusesWhatIsNoRate)
{
    StoreOfADay fixture;
    ClientBook book(*fixture.store);
    ASSERT_TRUE(book.setClientRounding(fixture.client, RoundingPolicy::nearestSixMinutes));
    ASSERT_TRUE(book.setClientRate(fixture.client, "87.50"));
    const auto refused = book.setClientRate(fixture.client, "12-3");
    ASSERT_FALSE(refused);
    EXPECT_EQ(message(refused.error()), "Enter a number, for example 150 or 87.50.");
    EXPECT_FALSE(book.addClient({.name = "Hafenkante", .color = "#12", .rate = {}, .rounding = {}}));
    EXPECT_FALSE(book.addClient({.name = " ", .color = {}, .rate = "1", .rounding = {}}));
    const auto clients = *book.clients();
    ASSERT_EQ(clients.size(), 1U);
    EXPECT_EQ(clients.front().billing,
              (ClientBillingDefaults{Decimal::parse("87.5"), RoundingPolicy::nearestSixMinutes}));
    EXPECT_FALSE(book.renameClient(ClientID::random(), "Nobody"));
}

} // namespace stintbook
