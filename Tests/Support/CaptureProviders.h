#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Base/Executor.h"
#include "Base/TimeSource.h"
#include "Capture/AccessibilityTrustProbing.h"
#include "Capture/BrowserDomainProviding.h"
#include "Capture/CalendarContextProviding.h"
#include "Capture/FocusedWindowProviding.h"
#include "Capture/FrontmostApplicationProviding.h"
#include "Capture/IdleStateProviding.h"
#include "Capture/SystemBoundaryProviding.h"
#include "Capture/UnsavedSegmentKeeping.h"

namespace stintbook {

/// A desktop whose windows, input and sleep a test moves by hand.
class ScriptedDesktop final : public FrontmostApplicationProviding,
                              public FocusedWindowProviding,
                              public BrowserDomainProviding,
                              public SystemBoundaryProviding,
                              public IdleStateProviding {
public:
    ScriptedDesktop(const TimeSource& wall, const AwakeClock& clock)
        : m_wall(wall)
        , m_clock(clock)
        , m_lastInput(clock.awake())
    {
    }

    // What a test does

    void show(const std::string& application, const std::string& title, const std::string& host = "")
    {
        front = FrontmostWindow{{{application, application}, 7, m_wall.now()}, title};
        hosts[application] = host;
        if (m_frontFollower)
            m_frontFollower(*front);
    }
    void touch() { m_lastInput = m_clock.awake(); }
    void suspend(GapReason reason) { m_boundaryFollower(ActivitySuspended{reason, m_wall.now()}); }
    void resume(SystemResumeCause cause) { m_boundaryFollower(ActivityResumed{cause, m_wall.now()}); }

    std::optional<FrontmostWindow> front;
    /// Of each browser's front tab.
    std::map<std::string, std::string> hosts;
    bool canSampleIdle = true;
    int titleReadings = 0;
    int domainReadings = 0;

    // What it provides

    std::optional<FrontmostWindow> current() override { return front; }
    void follow(FrontmostApplicationProviding::Follower follower) override
    {
        m_frontFollower = std::move(follower);
        if (front)
            m_frontFollower(*front);
    }
    void follow(SystemBoundaryProviding::Follower follower) override
    {
        m_boundaryFollower = std::move(follower);
    }
    void stop() override { m_frontFollower = nullptr; }
    std::string name() const override { return "scripted"; }

    FocusedContext context(const FrontmostWindow& window) override
    {
        ++titleReadings;
        return window.title.empty() ? FocusedContext::none() : FocusedContext::windowTitle(window.title);
    }
    BrowserDomainReading reading(const FrontmostWindow& window) override
    {
        ++domainReadings;
        if (auto domain = BrowserDomain::fromText(hosts[window.application.identity.bundleIdentifier]))
            return {.kind = BrowserDomainReading::Kind::domain, .domain = std::move(domain)};
        return {};
    }
    std::expected<IdleState, std::string> sample() override
    {
        if (!canSampleIdle)
            return std::unexpected("no idle service");
        return IdleState{m_clock.awake() - m_lastInput, m_clock.awake()};
    }

private:
    const TimeSource& m_wall;
    const AwakeClock& m_clock;
    Seconds m_lastInput;
    FrontmostApplicationProviding::Follower m_frontFollower;
    SystemBoundaryProviding::Follower m_boundaryFollower;
};

class ScriptedTrust final : public AccessibilityTrustProbing {
public:
    bool isTrusted(TrustPrompt prompt) override
    {
        promptCount += prompt == TrustPrompt::shown ? 1 : 0;
        return trusted;
    }

    bool trusted = true;
    int promptCount = 0;
};

class ScriptedCalendar final : public CalendarContextProviding {
public:
    explicit ScriptedCalendar(const char* zone)
        : m_calendar(*CalendarContext::inZone(zone))
    {
    }

    void moveTo(const char* zone)
    {
        m_calendar = *CalendarContext::inZone(zone);
        if (m_follower)
            m_follower(m_calendar);
    }

    CalendarContext current() override { return m_calendar; }
    void follow(Follower follower) override { m_follower = std::move(follower); }
    void stop() override { m_follower = nullptr; }

private:
    CalendarContext m_calendar;
    Follower m_follower;
};

/// Runs each job a little later: a queue whose work takes its time.
class SlowExecutor final : public Executor {
public:
    SlowExecutor(Timers& timers, Seconds delay)
        : m_timers(timers)
        , m_delay(delay)
    {
    }

    void post(Job job) override
    {
        auto shared = std::make_shared<Job>(std::move(job));
        m_waiting.push_back(m_timers.after(m_delay, [shared] { (*shared)(); }));
    }

private:
    Timers& m_timers;
    Seconds m_delay;
    std::vector<std::unique_ptr<Timers::Scheduled>> m_waiting;
};

/// Remembers what was last kept.
class KeptSegments final : public UnsavedSegmentKeeping {
public:
    void keep(std::span<const ActivitySegment> segments) override
    {
        kept.assign(segments.begin(), segments.end());
        ++writes;
    }

    std::vector<ActivitySegment> kept;
    int writes = 0;
};

} // namespace stintbook
