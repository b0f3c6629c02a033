#include "Platform/FrontmostReporter.h"

#include <utility>

#include "Capture/IgnoredApplications.h"

namespace stintbook {

namespace {

/// Two programs exchange the focus within a few milliseconds; a person sees no delay yet.
constexpr Seconds settlingTime{0.075};

} // namespace

FrontmostReporter::FrontmostReporter(Timers& timers, const TimeSource& timeSource,
                                     ApplicationIdentities& identities, Read read)
    : m_timers(timers)
    , m_timeSource(timeSource)
    , m_identities(identities)
    , m_read(std::move(read))
{
}

std::optional<FrontmostWindow> FrontmostReporter::current()
{
    auto seen = m_read();
    return seen ? recorded(*seen, m_timeSource.now()) : std::nullopt;
}

void FrontmostReporter::follow(FrontmostApplicationProviding::Follower follower)
{
    m_follower = std::move(follower);
    m_reported.reset();
    m_switchedAt = m_timeSource.now();
    report();
}

void FrontmostReporter::stop()
{
    m_follower = {};
    m_settling.reset();
}

void FrontmostReporter::noteSwitch()
{
    if (!m_switchedAt)
        m_switchedAt = m_timeSource.now();
    settleSoon();
}

void FrontmostReporter::noteTitle()
{
    if (!m_titledAt)
        m_titledAt = m_timeSource.now();
    settleSoon();
}

void FrontmostReporter::settleSoon()
{
    // A change that follows does not put the report off, or an animated title would for ever.
    if (m_follower && !m_settling)
        m_settling = m_timers.after(settlingTime, [this] { report(); });
}

void FrontmostReporter::report()
{
    m_settling.reset();
    auto switchedAt = std::exchange(m_switchedAt, {});
    auto titledAt = std::exchange(m_titledAt, {});
    auto seen = m_read();
    if (!seen || !m_follower)
        return;

    bool isSameWindow = m_reported && seen->window == m_reportedWindow;
    auto at = isSameWindow && titledAt ? titledAt : switchedAt ? switchedAt : titledAt;
    auto front = recorded(*seen, at.value_or(m_timeSource.now()));
    if (!front)
        return;
    m_reportedWindow = seen->window;
    bool isKnown = m_reported && front->title == m_reported->title
        && front->application.identity == m_reported->application.identity
        && front->application.processIdentifier == m_reported->application.processIdentifier;
    if (isKnown)
        return;
    m_reported = std::move(front);
    // A copy: the follower may stop this.
    auto follower = m_follower;
    follower(*m_reported);
}

std::optional<FrontmostWindow> FrontmostReporter::recorded(const SeenWindow& seen, Instant at)
{
    const auto& identity = identityOf(seen.hints);
    if (isIgnoredApplication(identity.bundleIdentifier))
        return std::nullopt;
    return FrontmostWindow{.application = {identity, seen.hints.processIdentifier, at}, .title = seen.title};
}

const ApplicationIdentity& FrontmostReporter::identityOf(const WindowHints& hints)
{
    if (m_identifiedHints != hints) {
        m_identity = m_identities.identify(hints);
        m_identifiedHints = hints;
    }
    return m_identity;
}

} // namespace stintbook
