#pragma once

#include <optional>

#include "Base/Instant.h"
#include "Domain/ActivitySegment.h"

namespace stintbook {

/// The machine sleeps, or the session is inactive, since some moment.
struct MachineSuspension {
    Instant startedAt;
    /// The awake uptime then; absent when none had been sampled.
    std::optional<Seconds> awakeAtStart;
};

/// The suspensions in force: at most one of each kind.
struct MachineSuspensions {
    std::optional<MachineSuspension> sleep;
    std::optional<MachineSuspension> session;
    /// Which of the two was reported last, where both are in force.
    GapReason lastReported = GapReason::systemSleep;

    bool isAny() const { return sleep || session; }

    /// Why nothing is observed: the newest one still in force.
    std::optional<GapReason> reason() const
    {
        if (sleep && session)
            return lastReported;
        if (sleep)
            return GapReason::systemSleep;
        if (session)
            return GapReason::sessionInactive;
        return std::nullopt;
    }
};

} // namespace stintbook
