#include <functional>
#include <random>
#include <set>
#include <sstream>
#include <string>

#include <gmock/gmock.h>

#include "Base/VirtualTime.h"
#include "Capture/ObservationPipeline.h"
#include "Capture/TraceReplay.h"
#include "Support/CaptureProviders.h"
#include "Support/CaptureSegmentRepository.h"

namespace stintbook {
namespace {

using testing::ElementsAre;

/// Capture as a process runs it, over a scripted desktop and virtual time.
struct Recording {
    explicit Recording(Seconds readingTime = {0.1}, Instant from = {0}, const char* zone = "UTC")
        : time(from, {1000})
        , desktop(std::make_shared<ScriptedDesktop>(time, time))
        , calendar(zone)
        , accessibility(std::make_shared<SlowExecutor>(time, readingTime))
        , trust(std::make_shared<ScriptedTrust>())
        , permission({capture, time, {accessibility, trust}, {2}})
        , repository(std::make_shared<CaptureSegmentRepository>())
        , coordinator({},
                      {{std::make_shared<InlineExecutor>(), repository}, capture, time, pauseStore, &kept})
        , pipeline({},
                   {*desktop,
                    {accessibility, desktop},
                    {accessibility, desktop},
                    *desktop,
                    *desktop,
                    permission,
                    calendar},
                   {time, time, capture}, coordinator)
        , writer(trace)
    {
        pipeline.traceTo(writer);
    }

    void start() { pipeline.start(true, true); }

    std::vector<std::string> stop()
    {
        std::optional<CaptureShutdownOutcome> outcome;
        pipeline.shutdown([&](CaptureShutdownOutcome reached) { outcome = reached; });
        EXPECT_EQ(outcome, (CaptureShutdownOutcome{CaptureShutdownOutcome::Kind::persisted}));
        return described(repository->saved);
    }

    void setBack(Seconds distance)
    {
        time.setWall(time.now() - distance);
        ++settings;
    }

    std::vector<std::string> replayed() const
    {
        std::istringstream lines(trace.str());
        const auto result = replayTrace(lines, std::make_shared<CaptureSegmentRepository>());
        EXPECT_FALSE(result.problem) << message(result.problem.value_or(TraceProblem{}));
        return described(result.segments);
    }

    VirtualTime time;
    InlineExecutor capture;
    std::shared_ptr<ScriptedDesktop> desktop;
    ScriptedCalendar calendar;
    std::shared_ptr<SlowExecutor> accessibility;
    std::shared_ptr<ScriptedTrust> trust;
    AccessibilityPermissionMonitor permission;
    InMemoryCapturePauseStore pauseStore;
    KeptSegments kept;
    std::shared_ptr<CaptureSegmentRepository> repository;
    CaptureCoordinator coordinator;
    ObservationPipeline pipeline;
    std::ostringstream trace;
    TraceWriter writer;
    /// How often the clock was set back.
    int settings = 0;
};

/// What holds for every single segment.
void expectSound(const ActivitySegment& segment)
{
    ASSERT_LT(segment.start, segment.end);
    const auto calendar = *CalendarContext::inZone(segment.timeZone.identifier);
    ASSERT_LE(segment.end, calendar.nextDayStart(segment.start)) << described(segment);
    ASSERT_EQ(segment.timeZone, calendar.stamp(segment.start));
    ASSERT_EQ(segment.gapReason.has_value(), segment.kind == ActivityKind::gap);
    ASSERT_EQ(segment.application.has_value(), segment.kind != ActivityKind::gap);
    if (segment.kind == ActivityKind::gap) {
        ASSERT_EQ(segment.evidence, ContextEvidence::none);
        ASSERT_TRUE(segment.context.isNone());
    } else {
        ASSERT_EQ(segment.evidence == ContextEvidence::applicationAndWindow, !segment.context.isNone());
        ASSERT_TRUE(!segment.browserDomain || segment.application->bundleIdentifier == "firefox")
            << described(segment);
    }
}

/// Every second was saved once, apart from those lived again after the clock was set back.
void expectAllTimeAccountedForOnce(const Recording& recording, Instant from)
{
    std::set<SegmentID> identifiers;
    auto covered = from;
    int returns = 0;
    for (const auto& segment : recording.repository->saved) {
        ASSERT_NO_FATAL_FAILURE(expectSound(segment));
        if (segment.start < covered)
            ++returns;
        else
            ASSERT_EQ(segment.start, covered) << described(segment);
        covered = segment.end;
        identifiers.insert(segment.id);
    }
    EXPECT_LE(returns, recording.settings);
    EXPECT_TRUE(covered == recording.time.now() || recording.settings > 0);
    EXPECT_EQ(identifiers.size(), recording.repository->saved.size());
}

TEST(ObservationPipeline, GivesEachReadingTheInstantOfItsSwitchAndNoTitleTheFormerTabsDomain)
{
    Recording recording(Seconds{0.4});
    recording.desktop->show("editor", "a.txt");
    recording.start();
    recording.time.advance({10});
    recording.desktop->show("firefox", "News", "news.example.org");
    recording.time.advance({0.1});
    recording.desktop->show("editor", "b.txt");
    recording.time.advance({9.9});
    recording.desktop->show("firefox", "News", "news.example.org");
    recording.time.advance({10});
    recording.desktop->show("firefox", "Mail", "mail.example.org");
    recording.time.advance({10});
    EXPECT_THAT(recording.stop(),
                ElementsAre("0-10 work editor 'a.txt'", "10-10.1 work firefox 'News' @news.example.org",
                            "10.1-20 work editor 'b.txt'", "20-30 work firefox 'News' @news.example.org",
                            "30-40 work firefox 'Mail' @mail.example.org"));
}

TEST(ObservationPipeline, ObservesOneTitleASecondAndNeverLosesTheLast)
{
    Recording recording(Seconds{0});
    recording.desktop->show("editor", "0");
    recording.start();
    recording.time.advance({10});
    for (int change = 1; change <= 8; ++change) {
        recording.desktop->show("editor", std::to_string(change));
        recording.time.advance({0.25});
    }
    recording.time.advance({8});
    EXPECT_THAT(recording.stop(),
                ElementsAre("0-10 work editor '0'", "10-11 work editor '1'", "11-12 work editor '4'",
                            "12-20 work editor '8'"));
}

TEST(ObservationPipeline, MakesAUserActiveAgainWithTheTitleThatTheyChange)
{
    Recording recording(Seconds{0});
    recording.desktop->show("editor", "a");
    recording.start();
    recording.time.advance({400});
    recording.desktop->show("editor", "blinks by itself");
    recording.time.advance({4});
    recording.desktop->touch();
    recording.desktop->show("editor", "typed");
    recording.time.advance({1});
    EXPECT_THAT(recording.stop(), ElementsAre("0-404 idle editor 'a'", "404-405 work editor 'typed'"));
}

TEST(ObservationPipeline, PollsADomainOnlyInABrowserThatIsObserved)
{
    Recording recording(Seconds{0});
    recording.desktop->show("firefox", "Tab", "a.example.org");
    recording.start();
    recording.time.advance({10});
    recording.desktop->hosts["firefox"] = "b.example.org";
    recording.time.advance({5});
    const auto whileObserved = recording.desktop->domainReadings;
    EXPECT_GE(whileObserved, 5);

    recording.pipeline.pause({Instant{100}, Seconds{85}});
    recording.desktop->touch();
    recording.time.advance({80});
    EXPECT_EQ(recording.desktop->domainReadings, whileObserved);
    recording.desktop->show("firefox", "Tab while paused", "c.example.org");
    const auto titlesWhilePaused = recording.desktop->titleReadings;
    recording.time.advance({4});
    EXPECT_EQ(recording.desktop->titleReadings, titlesWhilePaused);
    recording.time.advance({2});
    recording.desktop->show("editor", "x");
    const auto behindTheBrowser = recording.desktop->domainReadings;
    recording.time.advance({30});
    EXPECT_EQ(recording.desktop->domainReadings, behindTheBrowser);
    EXPECT_THAT(recording.stop(),
                ElementsAre("0-12 work firefox 'Tab' @a.example.org",
                            "12-15 work firefox 'Tab' @b.example.org", "15-100 gap capturePaused",
                            "100-101 work firefox 'Tab while paused' @c.example.org",
                            "101-131 work editor 'x'"));
}

TEST(ObservationPipeline, FollowsThePermissionAndThePreferences)
{
    Recording recording(Seconds{0});
    recording.trust->trusted = false;
    recording.desktop->show("firefox", "Tab", "a.example.org");
    recording.start();
    recording.time.advance({5});
    recording.permission.prompt();
    recording.time.advance({4});
    EXPECT_EQ(recording.trust->promptCount, 1);
    EXPECT_EQ(recording.coordinator.status().permission, CapturePermissionState::awaitingUserAction);
    EXPECT_EQ(recording.desktop->titleReadings, 0);
    recording.trust->trusted = true;
    recording.time.advance({11});
    recording.pipeline.setRetainsTitleContext(false);
    recording.time.advance({10});
    recording.desktop->show("firefox", "Another tab", "a.example.org");
    recording.time.advance({10});
    recording.pipeline.setBrowserContextEnabled(false);
    recording.time.advance({10});
    recording.pipeline.setBrowserContextEnabled(true);
    recording.pipeline.setRetainsTitleContext(true);
    recording.time.advance({10});
    recording.trust->trusted = false;
    recording.time.advance({10});
    EXPECT_EQ(recording.coordinator.status().permission, CapturePermissionState::revoked);
    EXPECT_THAT(recording.stop(),
                ElementsAre("0-10 work firefox @a.example.org", "10-20 work firefox 'Tab' @a.example.org",
                            "20-40 work firefox @a.example.org", "40-50 work firefox",
                            "50-62 work firefox 'Another tab' @a.example.org",
                            "62-70 work firefox @a.example.org"));
}

TEST(ObservationPipeline, NoticesThatNobodySampledAndThatTheClockWasSetBack)
{
    Recording recording(Seconds{0});
    recording.desktop->show("editor", "a");
    recording.start();
    recording.time.advance({30});
    recording.desktop->canSampleIdle = false;
    recording.time.advance({62});
    recording.desktop->touch();
    recording.desktop->canSampleIdle = true;
    recording.time.advance({28});
    recording.time.setWall({100});
    recording.time.advance({20});
    EXPECT_THAT(recording.stop(),
                ElementsAre("0-30 work editor 'a'", "30-105 gap noObservation", "105-120 work editor 'a'",
                            "115-120 work editor 'a'"));
}

TEST(ObservationPipeline, KeepsTheOpenSegmentsExtentOutsideTheProcess)
{
    Recording recording(Seconds{0});
    recording.desktop->show("editor", "a");
    recording.start();
    recording.time.advance({40});
    EXPECT_THAT(described(recording.kept.kept), ElementsAre("0-30 work editor 'a'"));
    const auto id = recording.kept.kept.front().id;
    recording.desktop->suspend(GapReason::systemSleep);
    EXPECT_EQ(recording.repository->saved.front().id, id);
    recording.time.sleep({1000});
    recording.desktop->resume(SystemResumeCause::systemWake);
    recording.repository->refuses = [] { return true; };
    recording.time.advance({2});
    recording.desktop->show("browser", "b");
    recording.time.advance({4});
    EXPECT_THAT(described(recording.kept.kept),
                ElementsAre("1040-1042 work editor 'a'", "1042-1045 work browser 'b'"));
    recording.repository->refuses = nullptr;
    recording.stop();
    EXPECT_TRUE(recording.kept.kept.empty());
}

TEST(ObservationPipeline, AccountsForEverySecondOnceAndWritesATraceWhoseReplayGivesTheSameSegments)
{
    const std::vector<const char*> zones{"Europe/Berlin",  "America/St_Johns", "Africa/Cairo",
                                         "Asia/Kathmandu", "America/New_York", "Australia/Lord_Howe"};
    for (unsigned seed = 0; seed < 80; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto below = [&](int bound) {
            return static_cast<int>(random() % static_cast<unsigned>(bound));
        };
        const auto anyZone = [&] { return zones[static_cast<std::size_t>(below(6))]; };
        const Instant from{1'200'000'000.0 + below(600'000'000)};
        Recording recording(Seconds{below(3) * 0.35}, from, anyZone());
        recording.desktop->show("editor", "first");
        if (below(4) == 0)
            recording.pauseStore.pause = CapturePause{recording.time.now() + Seconds{500}, {600}};
        recording.start();
        auto& desktop = *recording.desktop;
        auto& pipeline = recording.pipeline;
        auto& time = recording.time;
        const auto show = [&] {
            desktop.show(below(2) == 0 ? "firefox" : "editor",
                         std::string(1, static_cast<char>('a' + below(4))),
                         below(2) == 0 ? "a.example.org" : "b.example.org");
        };
        const std::vector<std::function<void()>> events{
            [&] { desktop.suspend(below(2) == 0 ? GapReason::systemSleep : GapReason::sessionInactive); },
            [&] {
                desktop.resume(below(2) == 0 ? SystemResumeCause::systemWake
                                             : SystemResumeCause::sessionActive);
            },
            [&] { time.sleep({below(4000) * 1.0}); },
            [&] {
                pipeline.pause(below(2) == 0 ? RequestedPause{}
                                             : RequestedPause{time.now() + Seconds{90}, {90}});
            },
            [&] { pipeline.resume(); },
            [&] { recording.trust->trusted = !recording.trust->trusted; },
            [&] { recording.calendar.moveTo(anyZone()); },
            [&] { pipeline.setRetainsTitleContext(below(2) == 0); },
            [&] { pipeline.setBrowserContextEnabled(below(2) == 0); },
            [&] { desktop.canSampleIdle = !desktop.canSampleIdle; },
            [&] { pipeline.resolveEvidenceForDeletion([](CaptureWriterBarrierOutcome) { }); },
            [&] { pipeline.releaseAfterDeletion([] { }); },
            [&] {
                if (seed % 2 == 0)
                    recording.setBack(Seconds{below(900) * 1.0});
            },
            show,
            show,
            show,
            show,
        };
        for (int step = 0; step < 150; ++step) {
            time.advance({below(3) == 0 ? below(1200) / 1.0 : below(3000) / 1000.0});
            if (below(2) == 0)
                desktop.touch();
            events[static_cast<std::size_t>(below(static_cast<int>(events.size())))]();
        }
        recording.pipeline.releaseAfterDeletion([] { });
        const auto recorded = recording.stop();
        ASSERT_EQ(recording.replayed(), recorded) << recording.trace.str();
        expectAllTimeAccountedForOnce(recording, from);
        EXPECT_GT(recorded.size(), 15U);
    }
}

} // namespace
} // namespace stintbook
