#include <atomic>
#include <deque>
#include <future>

#include <gmock/gmock.h>

#include "Base/VirtualTime.h"
#include "Capture/CaptureCoordinator.h"
#include "Support/CaptureProviders.h"
#include "Support/CaptureSegmentRepository.h"
#include "Support/CapturedLog.h"

namespace stintbook {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

/// Holds jobs back until a test runs them: a store that takes its time.
class HeldExecutor final : public Executor {
public:
    void post(Job job) override { m_jobs.push_back(std::move(job)); }
    void runOne()
    {
        auto job = std::move(m_jobs.front());
        m_jobs.pop_front();
        job();
    }
    std::size_t waiting() const { return m_jobs.size(); }

private:
    std::deque<Job> m_jobs;
};

struct Running {
    explicit Running(std::shared_ptr<Executor> store = std::make_shared<InlineExecutor>(),
                     const std::optional<CapturePause>& pause = {}, Instant from = {0})
        : time(from)
        , repository(std::make_shared<CaptureSegmentRepository>())
        , coordinator({}, {{std::move(store), repository}, capture, time, pauseStore, &kept})
    {
        pauseStore.pause = pause;
        coordinator.followStatus([this](const CaptureStatus& status) { statuses.push_back(status); });
        coordinator.start({.at = from,
                           .calendar = *CalendarContext::inZone("UTC"),
                           .permission = CapturePermissionState::granted});
    }

    void show(double at, const std::string& application)
    {
        coordinator.apply(input::Frontmost{{{application, application}, 1, {at}}, {}, {at}});
    }
    void sample(double at, double idle) { coordinator.apply(input::IdleSample{{idle}, {at}, {at}}); }
    std::vector<std::string> saved() const { return described(repository->saved); }
    void shutDown(double at)
    {
        coordinator.shutdown({at}, [this](CaptureShutdownOutcome reached) { outcome = reached; });
    }

    VirtualTime time;
    InlineExecutor capture;
    std::shared_ptr<CaptureSegmentRepository> repository;
    InMemoryCapturePauseStore pauseStore;
    KeptSegments kept;
    CaptureCoordinator coordinator;
    std::vector<CaptureStatus> statuses;
    std::optional<CaptureShutdownOutcome> outcome;
};

TEST(CaptureCoordinator, HasOneSaveAtATimeUnderWayAndKeepsTheOrderWhenItIsRefused)
{
    const CapturedLog log;
    const auto store = std::make_shared<HeldExecutor>();
    Running running(store);
    running.show(0, "a");
    running.show(10, "b");
    running.show(20, "c");
    running.show(30, "d");
    ASSERT_EQ(store->waiting(), 1U);
    EXPECT_EQ(running.coordinator.unsavedCount(), 3U);
    // Already before the store has answered.
    EXPECT_THAT(described(running.kept.kept), ElementsAre("0-10 work a", "10-20 work b", "20-30 work c"));

    running.repository->refuses = [&] { return running.repository->saveCount == 1; };
    store->runOne();
    running.sample(35, 1);
    ASSERT_EQ(store->waiting(), 1U);
    store->runOne();
    EXPECT_THAT(running.saved(), ElementsAre("0-10 work a", "10-20 work b", "20-30 work c"));
    EXPECT_EQ(running.coordinator.unsavedCount(), 0U);
    EXPECT_EQ(running.coordinator.accountedThrough(), Instant{30});
    EXPECT_THAT(log.errors(), ElementsAre("Deferred 1 segment(s) after a store error: disk full"));
    EXPECT_THAT(log.events(),
                Contains("Closed 3 segment(s); kind work, evidence applicationOnly, duration "
                         "30.000000s"));
}

TEST(CaptureCoordinator, GivesUpTheFlushAfterExactlyItsAttemptsAndKeepsWhatIsLeft)
{
    const CapturedLog log;
    Running running;
    running.show(0, "a");
    running.repository->refuses = [] { return true; };
    running.shutDown(10);
    EXPECT_EQ(running.repository->saveCount, 1);
    EXPECT_FALSE(running.outcome);
    running.time.advance({0.25});
    EXPECT_EQ(running.repository->saveCount, 2);
    running.time.advance({10});
    EXPECT_EQ(running.repository->saveCount, 3);
    EXPECT_EQ(running.outcome, (CaptureShutdownOutcome{CaptureShutdownOutcome::Kind::incomplete, 1}));
    EXPECT_THAT(described(running.kept.kept), ElementsAre("0-10 work a"));
    EXPECT_THAT(log.events(), Contains("Capture stopped; 1 segment(s) awaiting the final flush"));
    EXPECT_THAT(log.errors(),
                Contains("Shutdown flush gave up after 3 attempt(s) with 1 segment(s) unsaved"));

    running.repository->refuses = nullptr;
    running.shutDown(20);
    EXPECT_EQ(running.repository->saveCount, 3);
    EXPECT_EQ(running.outcome->kind, CaptureShutdownOutcome::Kind::incomplete);
}

TEST(CaptureCoordinator, WaitsForASaveUnderWayBeforeItFlushes)
{
    const auto store = std::make_shared<HeldExecutor>();
    Running running(store);
    running.show(0, "a");
    running.show(10, "b");
    running.shutDown(20);
    store->runOne();
    EXPECT_FALSE(running.outcome);
    store->runOne();
    EXPECT_EQ(running.outcome, CaptureShutdownOutcome{CaptureShutdownOutcome::Kind::persisted});
    EXPECT_THAT(running.saved(), ElementsAre("0-10 work a", "10-20 work b"));
    EXPECT_EQ(running.statuses.back().runtime, CaptureRuntimeState::stopped());
}

TEST(CaptureCoordinator, KeepsWhatIsUnsavedOnceForAnInput)
{
    Running running(std::make_shared<HeldExecutor>());
    running.show(0, "a");
    running.sample(400, 350);
    EXPECT_THAT(described(running.kept.kept), ElementsAre("0-50 work a", "50-400 idle a"));
    EXPECT_EQ(running.kept.writes, 1);
    running.coordinator.apply(input::Boundary{ActivitySuspended{GapReason::systemSleep, {410}}, {410}});
    EXPECT_EQ(running.kept.writes, 2);
    running.coordinator.apply(input::Stop{{420}});
    EXPECT_THAT(described(running.kept.kept),
                ElementsAre("0-50 work a", "50-410 idle a", "410-420 gap systemSleep"));
    EXPECT_EQ(running.kept.writes, 3);
}

TEST(CaptureCoordinator, HoldsTheWriterForADeletionUntilItIsReleased)
{
    const auto store = std::make_shared<HeldExecutor>();
    Running running(store);
    running.show(0, "a");
    running.show(10, "b");
    std::optional<CaptureWriterBarrierOutcome> settled;
    running.coordinator.apply(
        input::ResolveForDeletion{[&](CaptureWriterBarrierOutcome outcome) { settled = outcome; }, {15}});
    EXPECT_THAT(described(running.kept.kept), ElementsAre("0-10 work a", "10-15 work b"));
    running.coordinator.apply(input::Boundary{ActivitySuspended{GapReason::sessionInactive, {17}}, {17}});
    store->runOne();
    EXPECT_FALSE(settled);
    store->runOne();
    ASSERT_TRUE(settled);
    EXPECT_TRUE(settled->isResolved());
    EXPECT_EQ(store->waiting(), 0U);
    EXPECT_THAT(running.saved(), ElementsAre("0-10 work a", "10-15 work b"));

    running.coordinator.apply(input::ReleaseAfterDeletion{[] { }, {20}});
    store->runOne();
    EXPECT_THAT(running.saved(), ElementsAre("0-10 work a", "10-15 work b", "15-17 work b"));
}

TEST(CaptureCoordinator, TellsADeletionHowMuchIsUnsavedAndStillHolds)
{
    Running running;
    running.show(0, "a");
    running.repository->refuses = [] { return true; };
    std::optional<CaptureWriterBarrierOutcome> settled;
    running.coordinator.apply(
        input::ResolveForDeletion{[&](CaptureWriterBarrierOutcome outcome) { settled = outcome; }, {10}});
    EXPECT_EQ(settled, CaptureWriterBarrierOutcome{1});
    running.repository->refuses = nullptr;
    running.sample(15, 1);
    EXPECT_THAT(running.saved(), IsEmpty());
    running.coordinator.apply(input::ReleaseAfterDeletion{[] { }, {20}});
    EXPECT_THAT(running.saved(), ElementsAre("0-10 work a"));
}

TEST(CaptureCoordinator, ComesUpPausedWhereAPauseIsStoredThatHasNotEnded)
{
    Running paused({std::make_shared<InlineExecutor>()}, CapturePause{Instant{50}, {100}});
    EXPECT_THAT(paused.statuses,
                ElementsAre(CaptureStatus{CaptureRuntimeState::paused(Instant{50}),
                                          CapturePermissionState::granted}));
    paused.show(10, "a");
    paused.sample(60, 1);
    EXPECT_FALSE(paused.pauseStore.pause);
    paused.shutDown(70);
    EXPECT_THAT(paused.saved(), ElementsAre("0-50 gap capturePaused", "50-70 work a"));

    const Running expired({std::make_shared<InlineExecutor>()}, CapturePause{Instant{50}, {100}}, {50});
    EXPECT_TRUE(expired.coordinator.status().runtime.isActive());
    EXPECT_FALSE(expired.pauseStore.pause);
}

TEST(CaptureCoordinator, RemembersAPauseForAsLongAsItLastsAndPublishesIt)
{
    Running running;
    running.coordinator.apply(input::Pause{Instant{910}, {900}, {10}});
    EXPECT_EQ(running.pauseStore.pause, (CapturePause{Instant{910}, {900}}));
    running.coordinator.apply(input::Resume{{20}});
    EXPECT_FALSE(running.pauseStore.pause);
    running.coordinator.apply(input::PermissionChanged{CapturePermissionState::revoked, {30}});
    EXPECT_THAT(
        running.statuses,
        ElementsAre(CaptureStatus{CaptureRuntimeState::active(), CapturePermissionState::granted},
                    CaptureStatus{CaptureRuntimeState::paused(Instant{910}), CapturePermissionState::granted},
                    CaptureStatus{CaptureRuntimeState::active(), CapturePermissionState::granted},
                    CaptureStatus{CaptureRuntimeState::active(), CapturePermissionState::revoked}));
}

TEST(CaptureCoordinator, LogsWhatItInfersFromTheSamples)
{
    const CapturedLog log;
    Running running;
    running.show(0, "a");
    running.show(100, "b");
    running.sample(350, 312.5);
    running.coordinator.apply(input::IdleSample{{1}, {410}, {950.5}});
    running.coordinator.apply(input::Boundary{ActivitySuspended{GapReason::systemSleep, {960}}, {960}});
    running.coordinator.apply(input::IdleSample{{1}, {425}, {1960}});
    EXPECT_THAT(
        log.events(),
        testing::IsSupersetOf(
            {"Idle onset clamped to recorded evidence: last input was 62s behind it",
             "Detected unreported sleep of 540s",
             "Recovered a system sleep whose wake notification never arrived; the machine was asleep for "
             "994s"}));
}

TEST(CaptureCoordinator, AnswersWhatIsAskedBeforeItStartsAndAfterItStops)
{
    VirtualTime time({0});
    InlineExecutor capture;
    InMemoryCapturePauseStore pauseStore;
    const auto repository = std::make_shared<CaptureSegmentRepository>();
    CaptureCoordinator coordinator(
        {}, {{std::make_shared<InlineExecutor>(), repository}, capture, time, pauseStore});
    int answers = 0;
    const auto ask = [&] {
        coordinator.apply(input::CoordinationPoint{[&] { ++answers; }, {1}});
        coordinator.apply(input::ResolveForDeletion{[&](CaptureWriterBarrierOutcome) { ++answers; }, {1}});
        coordinator.apply(input::ReleaseAfterDeletion{[&] { ++answers; }, {1}});
    };
    ask();
    EXPECT_EQ(answers, 3);
    std::optional<CaptureShutdownOutcome> outcome;
    coordinator.shutdown({1}, [&](CaptureShutdownOutcome reached) { outcome = reached; });
    EXPECT_EQ(outcome, CaptureShutdownOutcome{CaptureShutdownOutcome::Kind::notRunning});

    coordinator.start({.at = {2}, .calendar = *CalendarContext::inZone("UTC")});
    coordinator.apply(input::Stop{{3}});
    ask();
    EXPECT_EQ(answers, 6);
}

TEST(CaptureCoordinatorThreads, SavesOnTheStoresThreadWhileCaptureGoesOn)
{
    const auto repository = std::make_shared<CaptureSegmentRepository>();
    std::atomic<bool> isFull = true;
    repository->refuses = [&] { return isFull && repository->saveCount % 3 == 0; };
    SerialExecutor capture("capture");
    const auto store = std::make_shared<SerialExecutor>("store");
    VirtualTime time({0});
    InMemoryCapturePauseStore pauseStore;
    CaptureCoordinator coordinator({}, {{store, repository}, capture, time, pauseStore});
    std::promise<CaptureShutdownOutcome> outcome;
    capture.post([&] { coordinator.start({.at = {0}, .calendar = *CalendarContext::inZone("UTC")}); });
    for (int second = 1; second <= 500; ++second)
        capture.post([&, at = Instant{static_cast<double>(second)}] {
            coordinator.apply(input::Frontmost{{{std::to_string(at.secondsSinceEpoch), ""}, 1, at}, {}, at});
        });
    capture.post([&] {
        isFull = false;
        coordinator.shutdown({501}, [&](CaptureShutdownOutcome reached) { outcome.set_value(reached); });
    });

    EXPECT_EQ(outcome.get_future().get(), CaptureShutdownOutcome{CaptureShutdownOutcome::Kind::persisted});
    ASSERT_EQ(repository->saved.size(), 500U);
    EXPECT_TRUE(std::ranges::is_sorted(repository->saved, segmentOrder));
    std::promise<void> idle;
    capture.post([&] { idle.set_value(); });
    idle.get_future().wait();
}

} // namespace
} // namespace stintbook
