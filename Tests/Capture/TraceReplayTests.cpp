#include <sstream>
#include <string>

#include <gmock/gmock.h>

#include "Capture/TraceReplay.h"
#include "Support/CaptureSegmentRepository.h"

namespace stintbook {
namespace {

using testing::ElementsAre;

/// A trace with one character less to read for each of JSON's quotes.
TraceReplayResult replayed(std::string trace)
{
    std::ranges::replace(trace, '`', '"');
    std::istringstream stream(trace);
    return replayTrace(stream, std::make_shared<CaptureSegmentRepository>());
}

std::vector<std::string> segmentsOf(const std::string& lines)
{
    const auto result =
        replayed("{`at`:0,`start`:{`timeZone`:`UTC`,`browserContextEnabled`:true}}\n" + lines);
    EXPECT_FALSE(result.problem) << message(result.problem.value_or(TraceProblem{}));
    return described(result.segments);
}

std::string front(double at, const std::string& application, const std::string& title = "")
{
    return fmt::format("{{`at`:{},`frontmost`:{{`bundleIdentifier`:`{}`,`displayName`:`{}`,`"
                       "processIdentifier`:7{}}}}}\n",
                       at, application, application, title.empty() ? "" : ",`windowTitle`:`" + title + "`");
}

std::string domain(double at, const std::string& browser, const std::string& host)
{
    return fmt::format("{{`at`:{},`browserDomain`:{{`reading`:`domain`,`host`:`{}`,`browser`:`{}`}}}}\n", at,
                       host, browser);
}

std::string sample(double at, double idle, double awake)
{
    return fmt::format("{{`at`:{},`idleSample`:{{`idleSeconds`:{},`awakeSeconds`:{}}}}}\n", at, idle, awake);
}

/// A sample of a machine that never slept.
std::string sample(double at, double idle)
{
    return sample(at, idle, at + 5000);
}

std::string line(double at, const std::string& rest)
{
    return fmt::format("{{`at`:{},{}}}\n", at, rest);
}

std::string stop(double at)
{
    return line(at, "`stop`:{}");
}

TEST(TraceReplay, RecordsSwitchesTitlesDomainsAndDocumentsBeforeTitles)
{
    EXPECT_THAT(
        segmentsOf(front(10, "editor", "a.txt") + front(20, "editor", "a.txt") + front(30, "editor", "b.txt")
                   + front(40, "browser", "News") + domain(40, "browser", "News.Example.org.")
                   + domain(43, "browser", "news.example.org") + front(50, "editor", "b.txt")
                   + domain(55, "browser", "late.example.org") + front(60, "browser", "News")
                   + domain(65, "browser", "no host")
                   + line(70,
                          "`frontmost`:{`bundleIdentifier`:`e`,`displayName`:`E`,`processIdentifier`:1,"
                          "`windowTitle`:`Writer`,`documentTitle`:`letter.odt`}")
                   + stop(75)),
        ElementsAre("10-30 work editor 'a.txt'", "30-40 work editor 'b.txt'",
                    "40-50 work browser 'News' @news.example.org", "50-60 work editor 'b.txt'",
                    "60-70 work browser 'News'", "70-75 work e «letter.odt»"));
}

TEST(TraceReplay, IsIdleFromTheLastInputButNotBeforeTheOpenStretch)
{
    EXPECT_THAT(segmentsOf(front(0, "editor") + sample(400, 299) + sample(415, 300) + sample(700, 585)
                           + sample(715, 5) + stop(800)),
                ElementsAre("0-115 work editor", "115-710 idle editor", "710-800 work editor"));
    EXPECT_THAT(segmentsOf(front(0, "editor") + front(200, "browser") + sample(400, 350) + stop(500)),
                ElementsAre("0-200 work editor", "200-500 idle browser"));
}

TEST(TraceReplay, OnlyRemembersATitleThatChangesWhileIdleButObservesAnotherApplication)
{
    EXPECT_THAT(segmentsOf(front(0, "chat", "1") + sample(400, 390) + front(410, "chat", "2")
                           + front(420, "chat", "3") + sample(505, 5) + stop(600)),
                ElementsAre("0-10 work chat '1'", "10-500 idle chat '1'", "500-600 work chat '3'"));
    EXPECT_THAT(segmentsOf(front(0, "chat") + sample(400, 390) + front(410, "updater") + sample(415, 405)
                           + stop(600)),
                ElementsAre("0-10 work chat", "10-410 idle chat", "410-600 idle updater"));
}

TEST(TraceReplay, FindsASleepThatNobodyReported)
{
    EXPECT_THAT(segmentsOf(front(0, "editor") + sample(15, 1, 100) + sample(615, 1, 160) + stop(700)),
                ElementsAre("0-75 work editor", "75-615 gap systemSleep", "615-700 work editor"));
    EXPECT_THAT(segmentsOf(front(0, "editor") + sample(15, 1, 100) + sample(615, 1, 640) + stop(700)),
                ElementsAre("0-700 work editor"));
    // It begins no earlier than what is open.
    EXPECT_THAT(segmentsOf(front(0, "editor") + sample(15, 1, 100) + front(300, "browser")
                           + sample(615, 1, 110) + stop(700)),
                ElementsAre("0-300 work editor", "300-615 gap systemSleep", "615-700 work browser"));
    // Idleness is judged afterwards.
    EXPECT_THAT(segmentsOf(front(0, "editor") + sample(15, 1, 100) + sample(615, 601, 115) + stop(700)),
                ElementsAre("0-30 work editor", "30-615 gap systemSleep", "615-700 idle editor"));
}

TEST(TraceReplay, DetectsAReportedSleepOnlyOnceAndRecoversAWakeThatNeverCame)
{
    EXPECT_THAT(segmentsOf(front(0, "editor") + sample(15, 1, 100) + line(20, "`suspended`:`systemSleep`")
                           + line(1000, "`resumed`:`systemWake`") + sample(1005, 1, 110) + stop(1100)),
                ElementsAre("0-20 work editor", "20-1000 gap systemSleep", "1000-1100 work editor"));
    EXPECT_THAT(segmentsOf(front(0, "editor") + sample(15, 1, 100) + line(20, "`suspended`:`systemSleep`")
                           + sample(22, 1, 107) + sample(1000, 1, 115) + sample(1015, 1, 130) + stop(1100)),
                ElementsAre("0-20 work editor", "20-1000 gap systemSleep", "1000-1100 work editor"));
}

TEST(TraceReplay, ObservesAgainWhenTheLastOfNestedHoldsHasEnded)
{
    EXPECT_THAT(segmentsOf(front(0, "editor") + line(10, "`suspended`:`sessionInactive`")
                           + line(20, "`suspended`:`systemSleep`") + line(25, "`resumed`:`sessionActive`")
                           + front(30, "browser") + line(40, "`resumed`:`systemWake`") + stop(50)),
                ElementsAre("0-10 work editor", "10-20 gap sessionInactive", "20-40 gap systemSleep",
                            "40-50 work browser"));
    EXPECT_THAT(segmentsOf(front(0, "editor") + line(10, "`suspended`:`sessionInactive`")
                           + line(20, "`suspended`:`systemSleep`") + line(30, "`resumed`:`systemWake`")
                           + line(40, "`resumed`:`sessionActive`") + stop(50)),
                ElementsAre("0-10 work editor", "10-20 gap sessionInactive", "20-30 gap systemSleep",
                            "30-40 gap sessionInactive", "40-50 work editor"));
    // A pause outranks the others, and what begins during it is remembered.
    EXPECT_THAT(segmentsOf(front(0, "editor") + line(10, "`pause`:{}") + line(20, "`suspended`:`systemSleep`")
                           + line(30, "`resume`:{}") + line(40, "`resumed`:`systemWake`") + stop(50)),
                ElementsAre("0-10 work editor", "10-30 gap capturePaused", "30-40 gap systemSleep",
                            "40-50 work editor"));
    EXPECT_THAT(segmentsOf(front(0, "editor") + line(10, "`suspended`:`sessionInactive`")
                           + line(20, "`pause`:{}") + line(30, "`resumed`:`sessionActive`")
                           + line(40, "`resume`:{}") + stop(50)),
                ElementsAre("0-10 work editor", "10-20 gap sessionInactive", "20-40 gap capturePaused",
                            "40-50 work editor"));
}

TEST(TraceReplay, EndsATimedPauseAtItsDeadlineBetweenLinesAndBeforeALineWithThatInstant)
{
    EXPECT_THAT(segmentsOf(front(0, "editor") + line(10, "`pause`:{`until`:20}") + front(15, "browser")
                           + front(30, "editor") + stop(40)),
                ElementsAre("0-10 work editor", "10-20 gap capturePaused", "20-30 work browser",
                            "30-40 work editor"));
    EXPECT_THAT(segmentsOf(front(0, "editor") + line(10, "`pause`:{`until`:20}")
                           + line(20, "`suspended`:`systemSleep`") + stop(40)),
                ElementsAre("0-10 work editor", "10-20 gap capturePaused", "20-40 gap systemSleep"));
}

TEST(TraceReplay, ForgetsADomainThatIsNoLongerWantedOrCouldNotBeRead)
{
    EXPECT_THAT(segmentsOf(front(0, "browser") + domain(5, "browser", "example.org")
                           + line(10, "`browserContextEnabled`:false")
                           + line(20, "`browserContextEnabled`:true") + domain(25, "browser", "example.org")
                           + line(30, "`browserDomain`:{`reading`:`failed`,`code`:-1708,`browser`:`browser`}")
                           + stop(40)),
                ElementsAre("0-5 work browser", "5-10 work browser @example.org", "10-25 work browser",
                            "25-30 work browser @example.org", "30-40 work browser"));
}

TEST(TraceReplay, OpensAGapWithoutObservationFromTheLastSampleUntilTheNext)
{
    EXPECT_THAT(segmentsOf(front(0, "editor") + sample(15, 1) + line(75, "`noObservation`:{`since`:15}")
                           + sample(100, 1) + line(160, "`noObservation`:{`since`:50}")
                           + front(170, "browser") + stop(200)),
                ElementsAre("0-15 work editor", "15-100 gap noObservation", "100-170 gap noObservation",
                            "170-200 work browser"));
    EXPECT_THAT(segmentsOf(front(0, "editor") + line(10, "`pause`:{}")
                           + line(75, "`noObservation`:{`since`:15}") + stop(100)),
                ElementsAre("0-10 work editor", "10-100 gap capturePaused"));
}

TEST(TraceReplay, LivesATimeTwiceWhenTheClockIsSetBack)
{
    EXPECT_THAT(segmentsOf(front(1000, "editor") + sample(1015, 1, 50) + line(400, "`clockSet`:{`from`:1020}")
                           + sample(410, 1, 65) + stop(500)),
                ElementsAre("1000-1020 work editor", "400-500 work editor"));
    EXPECT_THAT(segmentsOf(front(1000, "editor") + line(1010, "`pause`:{`until`:1100}")
                           + line(400, "`clockSet`:{`from`:1010}") + line(1200, "`clockSet`:{`from`:500}")
                           + stop(1300)),
                ElementsAre("1000-1010 work editor", "400-500 gap capturePaused", "1200-1300 work editor"));
}

TEST(TraceReplay, CutsAndStampsByTheCalendarInForceWhenAStretchCloses)
{
    // 2026-11-20 14:00 to 24:00 UTC; the day begins at 15:00 UTC in Tokyo.
    const auto result =
        replayed("{`at`:1795183200,`start`:{`timeZone`:`UTC`}}\n" + front(1795183200, "editor")
                 + line(1795190000, "`timeZone`:`Asia/Tokyo`") + stop(1795219200));
    ASSERT_THAT(described(result.segments),
                ElementsAre("1795183200-1795186800 work editor", "1795186800-1795219200 work editor"));
    EXPECT_EQ(result.segments[0].timeZone, (SegmentTimeZone{"Asia/Tokyo", 32400}));
}

TEST(TraceReplay, StopsAtTheLastLineWithoutAStopAndIsNotRunningWithoutALine)
{
    EXPECT_THAT(segmentsOf(front(0, "editor") + sample(15, 1)), ElementsAre("0-15 work editor"));
    const auto empty = replayed("# nothing\n\n");
    EXPECT_EQ(empty.outcome.kind, CaptureShutdownOutcome::Kind::notRunning);
    EXPECT_FALSE(empty.problem);
}

TEST(TraceReplay, SavesWhatCameBeforeAMalformedLine)
{
    const auto result =
        replayed("{`at`:0,`start`:{`timeZone`:`UTC`}}\n" + front(0, "editor") + "\n# a comment\n"
                 + front(10, "browser") + "{`at`:20,`frontmost`:7}\n" + stop(30));
    EXPECT_THAT(described(result.segments), ElementsAre("0-10 work editor"));
    EXPECT_EQ(result.problem, (TraceProblem{6, "frontmost is no object"}));
    EXPECT_EQ(result.outcome.kind, CaptureShutdownOutcome::Kind::persisted);
}

TEST(TraceReplay, CountsWhatARefusingStoreWasNotGiven)
{
    const auto replay =
        replayed("{`at`:0,`start`:{`timeZone`:`UTC`}}\n" + front(0, "a") + line(5, "`store`:`refuse`")
                 + front(10, "b") + front(20, "c") + line(25, "`store`:`accept`") + sample(30, 1)
                 + line(35, "`store`:`refuse`") + stop(40));
    EXPECT_THAT(described(replay.segments), ElementsAre("0-10 work a", "10-20 work b"));
    EXPECT_EQ(replay.unsavedCount, 1U);
    EXPECT_EQ(replay.outcome, (CaptureShutdownOutcome{CaptureShutdownOutcome::Kind::incomplete, 1}));
}

TEST(TraceReplay, GathersItsSavesInOrder)
{
    std::string trace = "{\"at\":0,\"start\":{\"timeZone\":\"UTC\"}}\n";
    for (int second = 0; second <= 10'000; ++second)
        trace += front(second, second % 2 == 0 ? "a" : "b");
    std::ranges::replace(trace, '`', '"');
    std::istringstream stream(trace);
    const auto repository = std::make_shared<CaptureSegmentRepository>();
    EXPECT_EQ(replayTrace(stream, repository, ReplayedSegments::counted).savedCount, 10'000U);
    EXPECT_LE(repository->saveCount, 4);
    EXPECT_TRUE(std::ranges::is_sorted(repository->saved, segmentOrder));
}

} // namespace
} // namespace stintbook
