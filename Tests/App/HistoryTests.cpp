// Deleting history, keeping it for a while, and what is said about it.

#include <functional>
#include <utility>

#include <gmock/gmock.h>

#include "App/ActivityDeletionCoordinator.h"
#include "App/HistoryCleanup.h"
#include "App/HistoryRetention.h"
#include "App/Midnights.h"
#include "App/PreferencesFile.h"
#include "Base/VirtualTime.h"
#include "Support/CapturedLog.h"
#include "Support/StoreOfADay.h"

namespace stintbook {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Outcome = ActivityDeletionCoordinator::Outcome;

const CalendarContext berlin = *CalendarContext::inZone("Europe/Berlin");

LocalDay day(const char* date)
{
    return *berlin.dayOn(*CivilDate::parse(date));
}

/// Capture that settles its evidence as far as it is told to.
struct Writer final : CaptureWriterBarrier {
    void resolveEvidenceForDeletion(Resolved reply) override
    {
        course.emplace_back("held");
        reply({unsavedSegmentCount});
    }
    void releaseAfterDeletion(Released reply) override
    {
        course.emplace_back("released");
        reply();
    }

    std::size_t unsavedSegmentCount = 0;
    std::vector<std::string> course;
};

/// Keeps the store's work until the test lets it go on.
struct Waiting final : Executor {
    void post(Job job) override { jobs.push_back(std::move(job)); }
    void runOne()
    {
        auto job = std::move(jobs.front());
        jobs.erase(jobs.begin());
        job();
    }
    std::vector<Job> jobs;
};

class History : public testing::Test {
protected:
    ActivityDeletionCoordinator coordinator(std::shared_ptr<Executor> work, CaptureWriterBarrier* barrier)
    {
        return ActivityDeletionCoordinator({.store = owned->sharedDatabase(),
                                            .writer = barrier,
                                            .work = std::move(work),
                                            .home = here,
                                            .calendar = [] { return berlin; }});
    }
    ActivityDeletionCoordinator::Reply note()
    {
        return [this](const Outcome& outcome) {
            writer.course.push_back(outcome ? std::to_string(outcome->dayCount) : message(outcome.error()));
        };
    }
    std::size_t segmentCount() const { return owned->segments().segments({{0}, {1e12}})->size(); }

    StoreOfADay recorded;
    std::unique_ptr<OpenedStore> owned = recorded.open(StoreRole::owner);
    InlineExecutor here;
    Writer writer;
    const ActivityDataScope thatDay = *LocalDayRange::between(day("2026-11-20"), day("2026-11-20"));
};

TEST_F(History, IsDeletedWhileTheWriterIsHeldAndErasedFromTheFilesAfterwards)
{
    const auto work = std::make_shared<Waiting>();
    auto deletion = coordinator(work, &writer);
    deletion.deleteActivity(thatDay, note());
    deletion.deleteActivity(AllHistory{}, note());
    EXPECT_THAT(writer.course, ElementsAre("held"));
    work->runOne();
    EXPECT_THAT(writer.course, ElementsAre("held", "released"));
    EXPECT_EQ(segmentCount(), 0U);
    work->runOne();
    EXPECT_THAT(writer.course, ElementsAre("held", "released", "1", "held"));
    writer.course.clear();
    work->runOne();
    work->runOne();
    EXPECT_THAT(writer.course, ElementsAre("released", "0"));
    EXPECT_THAT(work->jobs, IsEmpty());
}

TEST_F(History, StaysWhereSomethingIsUnsavedOrTheStoreRefusesAndTheWriterIsReleased)
{
    auto deletion = coordinator(std::make_shared<InlineExecutor>(), &writer);
    const auto expectRefused = [&](const char* sentence) {
        writer.course.clear();
        deletion.deleteActivity(AllHistory{}, note());
        EXPECT_THAT(writer.course, ElementsAre("held", "released", sentence));
        EXPECT_EQ(segmentCount(), 4U);
    };
    writer.unsavedSegmentCount = 2;
    expectRefused("The local store would not accept 2 recently recorded intervals, so nothing was deleted. "
                  "Try again once the store is answering.");
    writer.unsavedSegmentCount = 0;
    ASSERT_TRUE(owned->database().write([](StoreConnection& connection) -> Stored<void> {
        connection.execute(
            "CREATE TRIGGER refusing BEFORE DELETE ON ActivitySegment BEGIN SELECT RAISE(ABORT, "
            "'no'); END");
        return {};
    }));
    expectRefused("The store reported a problem (no). Nothing was deleted.");
}

TEST_F(History, IsNotDeletedAnyMoreOnceTheCoordinatorIsToStop)
{
    const auto refused = testing::EndsWith("Nothing was deleted.");
    for (const auto& scope : {thatDay, ActivityDataScope(AllHistory{})}) {
        const auto store = std::make_shared<Waiting>();
        auto stopping = coordinator(store, &writer);
        stopping.deleteActivity(scope, note());
        stopping.deleteActivity(scope, note());
        stopping.stop();
        store->runOne();
        // The second one, which waited for it, does not even hold the writer.
        EXPECT_THAT(std::exchange(writer.course, {}), ElementsAre("held", "released", refused, refused));
    }

    const auto work = std::make_shared<Waiting>();
    {
        auto deletion = coordinator(work, nullptr);
        deletion.deleteActivity(thatDay, note());
    }
    work->runOne();
    EXPECT_EQ(segmentCount(), 4U);
    EXPECT_THAT(writer.course, IsEmpty());
}

TEST_F(History, IsKeptForANumberOfDaysOfWhichTodayIsOne)
{
    const auto now = berlin.instantOn(*CivilDate::parse("2026-11-20"), 0, 0, 1);
    const auto cutoff = [&](std::int64_t count) {
        return retentionCutoff(*RetentionWindow::days(count), berlin, now);
    };
    EXPECT_EQ(cutoff(1), day("2026-11-20"));
    EXPECT_EQ(cutoff(30), day("2026-10-22"));
    EXPECT_EQ(cutoff(800'000), std::nullopt);
    EXPECT_EQ(cutoff(INT64_MAX), std::nullopt);
    EXPECT_EQ(retentionCutoff(RetentionWindow::keepUntilDeleted(), berlin, now), std::nullopt);
    // Samoa left out 30 December 2011.
    const auto apia = *CalendarContext::inZone("Pacific/Apia");
    EXPECT_EQ(retentionCutoff(*RetentionWindow::days(3), apia,
                              apia.instantOn(*CivilDate::parse("2012-01-01"), 12, 0, 0)),
              apia.dayOn(*CivilDate::parse("2011-12-31")));
}

TEST_F(History, IsCleanedUpAtTheStartAndAfterEachLocalMidnightAsChosenLast)
{
    CapturedLog log;
    auto deletion = coordinator(std::make_shared<InlineExecutor>(), &writer);
    PreferencesFile file(recorded.directory / "preferences.toml");
    AppPreferences preferences(file);
    PreferencesFile fileElsewhere(file.file());
    AppPreferences chosenElsewhere(fileElsewhere);
    auto calendar = berlin;
    VirtualTime time(berlin.instantOn(*CivilDate::parse("2026-11-20"), 22, 0, 0));
    InlineExecutor here;
    HistoryCleanup cleanup({.preferences = preferences,
                            .stored = {std::make_shared<InlineExecutor>(), {std::shared_ptr<void>(), &file}},
                            .home = here,
                            .deletion = deletion,
                            .calendar = [&] { return calendar; },
                            .timeSource = time});
    Midnights midnights({.calendar = [&] { return calendar; }, .timeSource = time, .timers = time},
                        [&] { cleanup.clean(); });
    preferences.setRetentionWindow(*RetentionWindow::days(1));
    cleanup.clean();
    EXPECT_EQ(preferences.lastAutomaticCleanup(), std::nullopt);

    chosenElsewhere.setRetentionWindow(*RetentionWindow::days(2));
    chosenElsewhere.setAutomaticCleanupEnabled(true);
    time.advance(Seconds{3 * 3600});
    EXPECT_EQ(preferences.lastAutomaticCleanup(), day("2026-11-21").start);
    EXPECT_EQ(segmentCount(), 4U);

    writer.unsavedSegmentCount = 1;
    time.sleep(Seconds{24 * 3600});
    EXPECT_EQ(preferences.lastAutomaticCleanup(), day("2026-11-21").start);
    EXPECT_THAT(
        log.errors(),
        ElementsAre(
            "Retention cleanup failed: The local store would not accept 1 recently recorded interval, "
            "so nothing was deleted. Try again once the store is answering."));
    writer.unsavedSegmentCount = 0;
    // Two hours earlier than at home.
    calendar = *CalendarContext::inZone("Europe/Moscow");
    midnights.calendarChanged();
    time.advanceTo(day("2026-11-23").start - Seconds{3600});
    EXPECT_EQ(preferences.lastAutomaticCleanup(), day("2026-11-23").start - Seconds{2 * 3600});
    EXPECT_EQ(segmentCount(), 0U);
    EXPECT_THAT(log.events(), ElementsAre("Retention cleanup removed 1 day(s)"));
}

} // namespace

} // namespace stintbook
