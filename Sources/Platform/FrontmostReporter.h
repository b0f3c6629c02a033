#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Base/TimeSource.h"
#include "Capture/FrontmostApplicationProviding.h"
#include "Platform/ApplicationIdentities.h"

namespace stintbook {

/// A window as a window system describes it.
struct SeenWindow {
    /// Tells the windows of one window system apart.
    std::uint64_t window = 0;
    WindowHints hints;
    std::string title;
};

/// What all sources of the frontmost application share: waits until a change has settled, asks what is in
/// front then, and reports it with the instant at which the change began.
///
/// Focus passes through intermediate states for a millisecond or two, and notifications come in twos; what
/// is reported is the state that stays.
class FrontmostReporter {
public:
    /// The window in front at this moment; absent when none is.
    using Read = std::function<std::optional<SeenWindow>()>;

    FrontmostReporter(Timers& timers, const TimeSource& timeSource, ApplicationIdentities& identities,
                      Read read);

    std::optional<FrontmostWindow> current();
    void follow(FrontmostApplicationProviding::Follower follower);
    void stop();

    /// Another window may have come to the front at this moment.
    void noteSwitch();
    /// The front window's title changed at this moment.
    void noteTitle();

private:
    /// Absent for an application that is never recorded.
    std::optional<FrontmostWindow> recorded(const SeenWindow& seen, Instant at);
    const ApplicationIdentity& identityOf(const WindowHints& hints);
    void settleSoon();
    void report();

    Timers& m_timers;
    const TimeSource& m_timeSource;
    ApplicationIdentities& m_identities;
    Read m_read;
    FrontmostApplicationProviding::Follower m_follower;

    std::optional<Instant> m_switchedAt;
    std::optional<Instant> m_titledAt;
    std::unique_ptr<Timers::Scheduled> m_settling;

    std::uint64_t m_reportedWindow = 0;
    std::optional<FrontmostWindow> m_reported;
    /// Titles change far more often than applications.
    std::optional<WindowHints> m_identifiedHints;
    ApplicationIdentity m_identity;
};

} // namespace stintbook
