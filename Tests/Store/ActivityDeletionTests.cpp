// What a deletion of history takes and leaves: as records, and as bytes in the store's files.

#include <csignal>
#include <functional>
#include <random>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Store/ActivityDeletion.h"
#include "StoreSamples.h"

namespace stintbook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Remains = DeletedActivity::Remains;

constexpr std::uint32_t minutesADay = 24 * 60;
const CalendarContext berlin = *CalendarContext::inZone("Europe/Berlin");
const CalendarContext newYork = *CalendarContext::inZone("America/New_York");

/// The sample day is the day 0.
LocalDay day(int number)
{
    return *berlin.dayOn(berlin.dateOf(sampleDay.start).plusDays(number));
}

ActivityDataScope days(int from, int through)
{
    return *LocalDayRange::between(day(from), day(through));
}

/// A minute of a day, with a title and a host that no other one has.
ActivitySegment segment(int ofDay, std::uint32_t minute)
{
    auto segment = sampleSegment(static_cast<std::uint32_t>(ofDay) * minutesADay + minute);
    segment.context = FocusedContext::windowTitle(fmt::format("title {}/{}.", ofDay, minute));
    segment.browserDomain = BrowserDomain::fromText(fmt::format("host-{}-{}.example.org", ofDay, minute));
    return segment;
}

ReviewedWorkItem item(const ActivitySegment& segment, const CalendarContext& calendar = berlin)
{
    return {.id = {segment.id.uuid},
            .day = calendar.dayOf(segment.start),
            .start = segment.start,
            .end = segment.end,
            .assignment = {sampleClient, sampleProject, true},
            .description = "description of " + segment.context.text,
            .slices = {{segment.id, segment.start, segment.end}}};
}

struct Deletion : testing::Test {
    SampleStore store;
    std::shared_ptr<StoreDatabase> database = store.open();

    PersistentActivitySegmentRepository segments() const
    {
        return PersistentActivitySegmentRepository(database);
    }
    PersistentReviewStore review() const { return PersistentReviewStore(database); }

    void save(const std::vector<ActivitySegment>& recorded) const { ASSERT_TRUE(segments().save(recorded)); }

    /// On each of the days three minutes, of which the second is reviewed, the third frozen, and the day approved.
    void recordAndReview(int count) const
    {
        for (int number = 0; number < count; ++number) {
            save({segment(number, 1), segment(number, 2), segment(number, 3)});
            ASSERT_TRUE(
                review().apply({.upserts = {item(segment(number, 3))},
                                .reviewUpserts = {{segment(number, 2).id, {.isIgnored = true}},
                                                  {segment(number, 3).id, {.isConfirmed = true}}},
                                .approval = ReviewedDayApproval{day(number), {std::string(64, 'a')}, {1}}}));
        }
        ASSERT_TRUE(review().append(
            {.id = numbered<ExportSnapshotID>(1), .rangeStart = day(0), .rangeEnd = day(count)}));
    }
    /// What is recorded, reviewed, frozen and approved, as the days' numbers.
    std::string kept(int count) const
    {
        std::string text;
        for (int number = 0; number < count; ++number) {
            const auto bounds = berlin.boundsOf(day(number));
            text +=
                fmt::format("{}:{}{}{}{} ", number, segments().segments(bounds)->size(),
                            review().reviews(std::vector{segment(number, 2).id})->size(),
                            review().items(day(number))->size(), review().approval(day(number))->has_value());
        }
        return text;
    }
    Stored<int> erased(const ActivityDataScope& scope) const
    {
        auto count = deleteActivity(*database, scope, berlin);
        EXPECT_EQ(eraseDeletedRemains(*database), Remains::erased);
        return count;
    }
    /// Whether any of the store's files holds the text.
    bool isInFiles(const std::string& text) const
    {
        return std::ranges::any_of(filesIn(store.directory.path()),
                                   [&](const auto& file) { return file.second.contains(text); });
    }
    /// Runs it in a process that then dies at once, wherever it has come to.
    void inAKilledProcess(const std::function<void(StoreDatabase&)>& work)
    {
        database.reset();
        const auto child = fork();
        if (child == 0) {
            const auto own = store.open();
            work(*own);
            kill(getpid(), SIGKILL);
        }
        waitpid(child, nullptr, 0);
    }
};

TEST_F(Deletion, OfARangeTakesItsDaysWithTheirReviewAndNothingElse)
{
    recordAndReview(4);
    EXPECT_EQ(kept(4), "0:311true 1:311true 2:311true 3:311true ");
    EXPECT_EQ(*erased(days(1, 2)), 2);
    EXPECT_EQ(kept(4), "0:311true 1:000false 2:000false 3:311true ");
    EXPECT_EQ(number(*database, "SELECT count(*) FROM SegmentBrowserDomain"), 6);
    EXPECT_EQ(number(*database, "SELECT count(*) FROM ReviewedSourceSlice"), 2);
    EXPECT_EQ(number(*database, "SELECT count(*) FROM ReviewedDisposition"), 2);
    EXPECT_EQ(review().snapshots()->size(), 1U);
    EXPECT_EQ(*erased(days(1, 2)), 0);

    EXPECT_EQ(*erased(AllHistory{}), 2);
    EXPECT_EQ(kept(4), "0:000false 1:000false 2:000false 3:000false ");
    EXPECT_EQ(review().snapshots()->size(), 1U);
}

TEST_F(Deletion, OfTheDaysBeforeACutoffLeavesTheirReview)
{
    recordAndReview(3);
    EXPECT_THAT(*recordedDays(*database, DaysBefore{day(2)}, berlin), ElementsAre(day(0), day(1)));
    EXPECT_EQ(*erased(DaysBefore{day(2)}), 2);
    EXPECT_EQ(kept(3), "0:011true 1:011true 2:311true ");
    EXPECT_EQ(*erased(DaysBefore{day(2)}), 0);
    // A range takes what the cleanup has left, the reviews of what was frozen included.
    EXPECT_EQ(*erased(days(0, 0)), 0);
    EXPECT_EQ(kept(3), "0:010false 1:011true 2:311true ");
    EXPECT_THAT(*review().reviews(std::vector{segment(0, 3).id}), IsEmpty());
}

TEST_F(Deletion, CutsWhatWasRecordedInAnotherZoneAtTheScopesBounds)
{
    // Two minutes around each midnight of Berlin, in the middle of a day of New York.
    std::vector<ActivitySegment> crossing;
    for (const int midnight : {0, 1}) {
        auto across = segment(midnight, 0);
        across.start = across.start - Seconds{60};
        across.timeZone = newYork.stamp(across.start);
        crossing.push_back(across);
    }
    save(crossing);
    const auto theirDay = newYork.dayOf(crossing[0].start);
    const auto items = [&] { return std::vector{item(crossing[0], newYork), item(crossing[1], newYork)}; };
    ASSERT_TRUE(review().apply({.upserts = items(),
                                .reviewUpserts = {{crossing[0].id, {.isIgnored = true}}},
                                .approval = ReviewedDayApproval{theirDay, {std::string(64, 'a')}, {1}}}));

    EXPECT_EQ(*erased(days(0, 0)), 1);
    crossing[0].end = day(0).start;
    crossing[1].start = day(1).start;
    EXPECT_EQ(*segments().segments(allTime), crossing);
    EXPECT_EQ(*review().items(allTime), items());
    EXPECT_EQ(review().reviews(std::vector{crossing[0].id})->size(), 1U);
    EXPECT_TRUE(review().approval(theirDay)->has_value());

    EXPECT_EQ(*erased(days(-1, -1)), 1);
    EXPECT_FALSE(review().approval(theirDay)->has_value());

    // One that is longer than the scope is cut in two.
    auto left = segment(5, 0);
    left.end = day(7).start + Seconds{60};
    auto right = left;
    save({left});
    EXPECT_EQ(*erased(days(6, 6)), 1);
    left.end = day(6).start;
    right.start = day(7).start;
    const auto pieces = *segments().segments({left.start, right.end});
    ASSERT_EQ(pieces.size(), 2U);
    right.id = pieces[1].id;
    EXPECT_THAT(pieces, ElementsAre(left, right));
}

TEST_F(Deletion, LeavesNotOneTextInTheFilesThatOnlyItHeld)
{
    // In an order that has pages split and joined.
    std::vector<std::pair<int, std::uint32_t>> moments;
    for (int number = 0; number < 8; ++number) {
        for (std::uint32_t minute = 0; minute < 300; ++minute)
            moments.emplace_back(number, minute);
    }
    std::mt19937 random(7);
    std::ranges::shuffle(moments, random);
    std::vector<ActivitySegment> recorded;
    for (const auto& [number, minute] : moments) {
        recorded.push_back(segment(number, minute));
        recorded.back().id = SegmentID::random();
    }
    save(recorded);
    for (const auto& one : recorded) {
        if (one.start < day(2).start) {
            ASSERT_TRUE(review().apply({.upserts = {item(one)}}));
        }
    }
    const auto copy = store.file.string() + ".v8-backup";
    std::filesystem::copy_file(store.file, copy);
    writeFile(store.file.string() + ".unsaved.damaged", "[{title 1/1.");

    for (const int gone : {1, 6, 0, 3})
        EXPECT_EQ(*erased(days(gone, gone)), 1);
    EXPECT_FALSE(std::filesystem::exists(copy));
    EXPECT_FALSE(std::filesystem::exists(store.file.string() + ".unsaved.damaged"));
    EXPECT_FALSE(std::filesystem::exists(store.file.string() + ".deletion"));
    std::string all;
    for (const auto& [name, contents] : filesIn(store.directory.path()))
        all += contents;
    for (const auto& one : recorded) {
        const auto number = moments[static_cast<std::size_t>(&one - recorded.data())].first;
        const bool isGone = number == 0 || number == 1 || number == 3 || number == 6;
        EXPECT_EQ(all.contains(one.context.text), !isGone) << one.context.text;
        EXPECT_EQ(all.contains(one.browserDomain->host()), !isGone);
        EXPECT_FALSE(isGone && all.contains("description of " + one.context.text));
    }
    EXPECT_TRUE(isSound(*database));
}

TEST_F(Deletion, IsWholeOrNotAtAllWhenKilledBeforeOrAfterItsCommit)
{
    recordAndReview(2);
    const auto copy = store.file.string() + ".v8-backup";
    writeFile(copy, "title 0/1.");
    inAKilledProcess([](StoreDatabase& own) {
        DeletionCourse course;
        course.progress = [](double) { kill(getpid(), SIGKILL); };
        std::ignore = deleteActivity(own, days(0, 0), berlin, course);
    });
    database = store.open();
    EXPECT_EQ(kept(2), "0:311true 1:311true ");
    EXPECT_TRUE(std::filesystem::exists(copy));

    inAKilledProcess([](StoreDatabase& own) { EXPECT_TRUE(deleteActivity(own, days(0, 0), berlin)); });
    ASSERT_TRUE(isInFiles("title 0/1."));
    database = store.open();
    EXPECT_EQ(kept(2), "0:000false 1:311true ");
    for (const auto* gone : {"title 0/", "host-0-", "description of title 0/"})
        EXPECT_FALSE(isInFiles(gone)) << gone;
    EXPECT_TRUE(isInFiles("title 1/1."));
}

TEST_F(Deletion, IsFinishedByTheNextStartWhenAnotherProgramReadsAnOlderState)
{
    recordAndReview(2);
    StoreConnection reader(store.file, StoreConnection::Access::readOnly);
    reader.execute("BEGIN");
    EXPECT_EQ(reader.number("SELECT count(*) FROM ActivitySegment"), 6);

    DeletionCourse course;
    course.patience = {};
    EXPECT_EQ(*deleteActivity(*database, days(0, 0), berlin, course), 1);
    EXPECT_EQ(eraseDeletedRemains(*database, course), Remains::leftForTheNextStart);
    EXPECT_EQ(kept(2), "0:000false 1:311true ");
    EXPECT_TRUE(isInFiles("title 0/1."));
    save({segment(0, 9)});

    reader.execute("COMMIT");
    database.reset();
    database = store.open();
    EXPECT_FALSE(isInFiles("title 0/1."));
    EXPECT_EQ(kept(2), "0:100false 1:311true ");
}

TEST_F(Deletion, ChangesNothingOnceItIsToStop)
{
    recordAndReview(2);
    std::stop_source ending;
    DeletionCourse course;
    course.stop = ending.get_token();
    course.progress = [&](double) { ending.request_stop(); };
    EXPECT_FALSE(deleteActivity(*database, days(0, 1), berlin, course));
    EXPECT_EQ(kept(2), "0:311true 1:311true ");
    EXPECT_FALSE(std::filesystem::exists(store.file.string() + ".deletion"));
}

} // namespace
} // namespace stintbook
