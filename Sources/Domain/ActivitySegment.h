#pragma once

#include <array>
#include <compare>
#include <optional>
#include <string_view>

#include "Base/Identifier.h"
#include "Base/Instant.h"
#include "Base/RawValue.h"
#include "Domain/ApplicationIdentity.h"
#include "Domain/BrowserDomain.h"
#include "Domain/CalendarContext.h"
#include "Domain/FocusedContext.h"

namespace stintbook {

using SegmentID = Identifier<struct SegmentKindTag>;

enum class ActivityKind { work, idle, gap };

template <> struct RawValues<ActivityKind> {
    static constexpr std::array table{
        std::pair{ActivityKind::work, std::string_view("work")},
        std::pair{ActivityKind::idle, std::string_view("idle")},
        std::pair{ActivityKind::gap, std::string_view("gap")},
    };
};

/// How much could be observed.
enum class ContextEvidence {
    /// The application, but no title was read or kept.
    applicationOnly,
    /// The application and its focused window's title or document.
    applicationAndWindow,
    /// Nothing: gaps.
    none,
};

template <> struct RawValues<ContextEvidence> {
    static constexpr std::array table{
        std::pair{ContextEvidence::applicationOnly, std::string_view("applicationOnly")},
        std::pair{ContextEvidence::applicationAndWindow, std::string_view("applicationAndWindow")},
        std::pair{ContextEvidence::none, std::string_view("none")},
    };
};

enum class SegmentOrigin { observed, manual };

template <> struct RawValues<SegmentOrigin> {
    static constexpr std::array table{
        std::pair{SegmentOrigin::observed, std::string_view("observed")},
        std::pair{SegmentOrigin::manual, std::string_view("manual")},
    };
};

/// Why a stretch of time holds no observation.
enum class GapReason { capturePaused, captureStopped, systemSleep, sessionInactive, noObservation };

template <> struct RawValues<GapReason> {
    static constexpr std::array table{
        std::pair{GapReason::capturePaused, std::string_view("capturePaused")},
        std::pair{GapReason::captureStopped, std::string_view("captureStopped")},
        std::pair{GapReason::systemSleep, std::string_view("systemSleep")},
        std::pair{GapReason::sessionInactive, std::string_view("sessionInactive")},
        std::pair{GapReason::noObservation, std::string_view("noObservation")},
    };
};

/// One recorded stretch of time. `start` is before `end`, and both lie in one day of the calendar that
/// cut it (`end` may be that day's end).
struct ActivitySegment {
    SegmentID id;
    Instant start;
    Instant end;
    ActivityKind kind = ActivityKind::work;
    /// Absent for gaps and for idle time without an application.
    std::optional<ApplicationIdentity> application;
    FocusedContext context;
    std::optional<BrowserDomain> browserDomain;
    ContextEvidence evidence = ContextEvidence::none;
    SegmentOrigin origin = SegmentOrigin::observed;
    SegmentTimeZone timeZone;
    /// Present exactly for gaps.
    std::optional<GapReason> gapReason;

    Interval interval() const { return {start, end}; }
    Seconds length() const { return end - start; }

    friend bool operator==(const ActivitySegment&, const ActivitySegment&) = default;
};

/// The order in which segments are listed: by start, then end, then the identifier's text.
inline bool segmentOrder(const ActivitySegment& a, const ActivitySegment& b)
{
    if (a.start != b.start)
        return a.start < b.start;
    if (a.end != b.end)
        return a.end < b.end;
    return a.id < b.id;
}

} // namespace stintbook
