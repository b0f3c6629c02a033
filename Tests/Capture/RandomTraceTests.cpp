#include <algorithm>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Capture/TraceReplay.h"
#include "Support/CaptureSegmentRepository.h"

namespace stintbook {
namespace {

/// A trace of everything that can happen, in no sensible order; only its instants, the uptime and the time
/// without input are those of one machine and its user.
class RandomTrace {
public:
    enum class Clock { steady, set };

    RandomTrace(unsigned seed, Clock clock)
        : m_engine(seed)
        , m_clock(clock)
        , m_now(1'200'000'000.0 + below(700'000'000) / 4.0)
    {
        line(R"("start":{"timeZone":")" + anyZone() + R"(","browserContextEnabled":true})");
        frontmost();
        for (int step = 0; step < 250; ++step) {
            pass(below(8) == 0 ? below(60'000) : below(4000) / 64.0);
            event();
        }
        line(R"("release":{})");
        line(R"("stop":{})");
    }

    std::string text() const { return m_lines.str(); }
    double now() const { return m_now; }
    /// Of the first `frontmost`, from which on time is accounted for.
    double start() const { return m_start; }
    /// How often the clock was set back.
    int settings() const { return m_settings; }

private:
    int below(int bound) { return static_cast<int>(m_engine() % static_cast<unsigned>(bound)); }
    template <typename T> T anyOf(const std::vector<T>& choices)
    {
        return choices[static_cast<std::size_t>(below(static_cast<int>(choices.size())))];
    }
    std::string anyZone()
    {
        return anyOf<std::string>({"Europe/Berlin", "America/New_York", "Africa/Cairo", "Asia/Kathmandu",
                                   "Pacific/Apia", "America/Sao_Paulo", "Australia/Lord_Howe", "UTC"});
    }

    void pass(double seconds)
    {
        m_now += seconds;
        m_awake += seconds;
        if (below(3) == 0)
            m_lastInput = m_now - std::min(seconds, below(100) * 1.0);
    }
    void line(const std::string& input) { m_lines << fmt::format("{{\"at\":{},{}}}\n", m_now, input); }
    void frontmost()
    {
        if (m_start == 0)
            m_start = m_now;
        const auto application = anyOf<std::string>({"editor", "browser", "shell"});
        line(fmt::format(
            R"("frontmost":{{"bundleIdentifier":"{}","displayName":"{}","processIdentifier":3,"windowTitle":"{}"}})",
            application, application, below(3)));
    }

    void event()
    {
        const int kind = below(24);
        if (kind < 15)
            line(anyOf<std::string>({
                R"("suspended":"systemSleep")",
                R"("resumed":"systemWake")",
                R"("suspended":"sessionInactive")",
                R"("resumed":"sessionActive")",
                R"("pause":{})",
                fmt::format(R"("pause":{{"until":{}}})", m_now + below(5000)),
                R"("resume":{})",
                fmt::format(R"("permission":"{}")", anyOf<std::string>({"granted", "revoked", "notGranted"})),
                fmt::format(R"("timeZone":"{}")", anyZone()),
                fmt::format(R"("retainsTitleContext":{})", below(2) == 0),
                fmt::format(R"("browserContextEnabled":{})", below(2) == 0),
                R"("hold":{})",
                R"("release":{})",
                R"("release":{})",
                fmt::format(R"("noObservation":{{"since":{}}})", m_now - below(200)),
            }));
        else if (kind == 15)
            m_now += below(20'000); // asleep
        else if (kind == 16 && m_clock == Clock::set)
            setBack(below(10'000));
        else if (kind < 19)
            line(fmt::format(
                R"("browserDomain":{{"reading":"domain","host":"{}.example","browser":"browser"}})",
                below(2) == 0 ? "a" : "b"));
        else if (kind < 21)
            line(fmt::format(R"("idleSample":{{"idleSeconds":{},"awakeSeconds":{}}})",
                             std::max(0.0, m_now - m_lastInput), m_awake));
        else
            frontmost();
    }
    void setBack(double seconds)
    {
        const auto from = m_now;
        m_now -= seconds;
        m_lastInput -= seconds;
        ++m_settings;
        line(fmt::format(R"("clockSet":{{"from":{}}})", from));
    }

    std::mt19937 m_engine;
    Clock m_clock;
    double m_now;
    double m_awake = 5000;
    double m_lastInput = m_now;
    double m_start = 0;
    int m_settings = 0;
    std::ostringstream m_lines;
};

std::vector<ActivitySegment> replayed(const RandomTrace& trace)
{
    std::istringstream lines(trace.text());
    auto result = replayTrace(lines, std::make_shared<CaptureSegmentRepository>());
    EXPECT_FALSE(result.problem) << message(result.problem.value_or(TraceProblem{}));
    return std::move(result.segments);
}

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
        ASSERT_TRUE(!segment.browserDomain || segment.application->bundleIdentifier == "browser")
            << described(segment);
    }
}

TEST(RandomTrace, AccountsForEverySecondOnceBetweenTwoSettingsOfTheClock)
{
    for (unsigned seed = 0; seed < 500; ++seed) {
        SCOPED_TRACE(seed);
        const RandomTrace trace(seed, seed < 250 ? RandomTrace::Clock::steady : RandomTrace::Clock::set);
        const auto segments = replayed(trace);
        std::set<SegmentID> identifiers;
        Instant covered{trace.start()};
        int setBack = 0;
        for (const auto& segment : segments) {
            ASSERT_NO_FATAL_FAILURE(expectSound(segment));
            if (segment.start < covered)
                ++setBack;
            else
                ASSERT_EQ(segment.start, covered) << described(segment);
            covered = segment.end;
            identifiers.insert(segment.id);
        }
        EXPECT_LE(setBack, trace.settings());
        EXPECT_TRUE(covered == Instant{trace.now()} || trace.settings() > 0);
        EXPECT_EQ(identifiers.size(), segments.size());
    }
}

} // namespace
} // namespace stintbook
