#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Screens/Review/DaySelection.h"
#include "Screens/Review/DayView.h"
#include "Screens/Review/SubjectFilter.h"
#include "Support/StoreOfADay.h"

namespace stintbook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DayViewTest : public testing::Test {
protected:
    using View = std::shared_ptr<const DayView>;

    View read(const View& shown = nullptr)
    {
        StoreDesk::Workplace place{*world.store, session};
        return readDay(book, world.day, place, shown).value();
    }

    std::vector<QString> listed(const SubjectFilter& filter)
    {
        std::vector<QString> rows;
        const auto view = read();
        for (const auto& row : filter.listed(view->subjects, searchedWords(*view)))
            rows.push_back(row.times);
        return rows;
    }

    StoreOfADay world;
    EditSession session;
    DayBook book{*world.store, world.calendar, &session};
};

TEST_F(DayViewTest, IsTheOneThatIsShownWhileThereIsNothingNew)
{
    const auto shown = read();
    EXPECT_EQ(read(shown), shown);

    ASSERT_TRUE(book.assign(world.day, world.blockIDs(), world.target()));
    const auto edited = read(shown);
    EXPECT_NE(edited, shown);
    EXPECT_EQ(edited->undoTitle, QStringLiteral("Assign"));
    EXPECT_EQ(read(edited), edited);

    // Somebody else makes it impossible to take the edit back: nothing is stored, and yet there is something new.
    auto elsewhere = world.open();
    ASSERT_TRUE(DayBook(*elsewhere, world.calendar).ignore(world.day, world.blockIDs()));
    const auto others = read(edited);
    EXPECT_NE(others, edited);
    EXPECT_FALSE(book.undo());
    const auto refused = read(others);
    EXPECT_NE(refused, others);
    EXPECT_TRUE(refused->undoTitle.isEmpty());
}

TEST_F(DayViewTest, IsSearchedByEverythingThatIsKnownOfItsWork)
{
    auto page = world.segment(world.hours(14, 15), ActivityKind::work, "firefox");
    page.context = {FocusedContextKind::windowTitle, "Issue 218: search ignores umlauts"};
    page.browserDomain = BrowserDomain::fromText("hafenkante.example");
    auto brief = page;
    brief.id = SegmentID::random();
    brief.start = page.end;
    brief.end = page.end + Seconds{20};
    brief.application.reset();
    brief.browserDomain.reset();
    brief.context = {FocusedContextKind::windowTitle, "Print"};
    ASSERT_TRUE(world.store->segments().save(std::vector{page, brief}));
    ASSERT_TRUE(book.assign(world.day, std::vector{world.blockIDs().front()}, world.target()));
    const auto item = book.freeze(world.day, std::vector{world.blockIDs().front()})->front();
    ASSERT_TRUE(book.describe(world.day, item.id.uuid, "Entwürfe für das Café"));

    const auto all = listed({});
    ASSERT_GE(all.size(), 4U);
    EXPECT_THAT(listed({.search = QStringLiteral("nordLICHT")}), ElementsAre(all[0]));
    EXPECT_THAT(listed({.search = QStringLiteral(" relaunch ")}), ElementsAre(all[0]));
    EXPECT_THAT(listed({.search = QStringLiteral("entwurfe fur das cafe")}), ElementsAre(all[0]));
    EXPECT_THAT(listed({.search = QStringLiteral("Konsole")}), ElementsAre(all[1]));
    EXPECT_THAT(listed({.search = QStringLiteral("kate")}), ElementsAre(all[0], all[2]));
    EXPECT_THAT(listed({.search = QStringLiteral("kate"), .onlyUnresolved = true}), ElementsAre(all[2]));
    EXPECT_THAT(listed({.search = QStringLiteral("umlauts")}), ElementsAre(all[3]));
    EXPECT_THAT(listed({.search = QStringLiteral("hafenkante")}), ElementsAre(all[3]));
    EXPECT_THAT(listed({.search = QStringLiteral("unknown app")}), ElementsAre(all.back()));
    EXPECT_THAT(listed({.search = QStringLiteral("print")}), ElementsAre(all.back()));
    EXPECT_THAT(listed({.search = QStringLiteral("nobody")}), IsEmpty());
    EXPECT_EQ(listed({.order = QStringLiteral("client")}).back(), all[0]);
}

TEST_F(DayViewTest, KeepsWhatIsChosenOrWhatTookItsPlace)
{
    ASSERT_TRUE(book.assign(world.day, world.blockIDs(), world.target()));
    const auto before = read();
    const auto& rows = before->subjects;
    ASSERT_EQ(rows.size(), 3U);
    const auto idle = before->spans.front().id;

    // Frozen, the middle one is another subject at the same time.
    const auto item = book.freeze(world.day, std::vector{rows[1].id})->front();
    const auto now = read();
    EXPECT_THAT(keptRows({rows[2].id, rows[1].id, idle}, rows, *now),
                ElementsAre(rows[2].id, item.id.uuid, idle));
    EXPECT_THAT(keptRows({UUID::random()}, rows, *now), IsEmpty());
    // What two were is one, and chosen once.
    EXPECT_THAT(keptRows({rows[1].id, item.id.uuid}, rows, *now), ElementsAre(item.id.uuid));
}

TEST(NeighbourTest, IsAsFarAwayAsThereIsAnything)
{
    const std::vector all{UUID::random(), UUID::random(), UUID::random()};
    EXPECT_EQ(neighbour(all, all[0], 1), all[1]);
    EXPECT_EQ(neighbour(all, all[1], 20), all[2]);
    EXPECT_EQ(neighbour(all, all[1], -20), all[0]);
    EXPECT_EQ(neighbour(all, std::nullopt, 1), all[0]);
    EXPECT_EQ(neighbour(all, std::nullopt, -1), all[2]);
    EXPECT_EQ(neighbour({}, std::nullopt, 1), std::nullopt);
}

} // namespace
} // namespace stintbook
